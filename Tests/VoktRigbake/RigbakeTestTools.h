#pragma once

#include <VokLib/Library/VokLib.h>
#include <VokLib/Tree/VokWorld.h>
#include <VoktRigbake/Skeleton/BuildSkeleton.h>

#include <bit>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "Support/Document.h"
#include "Support/Failure.h"

namespace Biff {
class CBlock;
}
class VokJoint;
class VokParse;

/// Brings the scene library and the hash registry up for as long as it lives.
class TestServices {
  public:
    TestServices();
    ~TestServices();

  private:
    VokLib library{true, true, true, true, true};
};

/// Reads a document around `body` into a new world.
void ParseDocument(VokWorld& world, std::string_view body, std::string_view rootAttributes = "");

/// A scene read from a document's body, with the services that it needs.
class TestScene {
  public:
    explicit TestScene(std::string_view body, std::string_view rootAttributes = "");

    VokWorld& World() { return *world; }
    /// The first joint of this name in pre-order; fails the test without one.
    VokJoint* Joint(std::string_view name);
    std::vector<VokJoint*> Joints(const std::vector<std::string>& names);
    /// The skeleton of these roots, by name.
    std::unique_ptr<SkeletonData> Build(const std::vector<std::string>& roots, bool verbose = false,
                                        const VoktObjFilter* filter = nullptr);

  private:
    TestServices services;
    std::unique_ptr<VokWorld> world;
};

/// The names of the skeleton's joints in index order.
std::vector<std::string> NamesOf(const SkeletonData& skeleton);

/// Whether what this machine reads in place is in big-endian order.
inline constexpr bool kBigEndianHere = std::endian::native == std::endian::big;

/// The bytes of a block's file. Whatever a test bakes must stand the checks of those who load it;
/// `fault` is what they say of contents that no sound scene has.
std::string WriteBytes(Biff::CBlock& block, std::uint32_t endian, const std::string& fault = "");

/// The bytes of a skeleton's file.
std::string WriteBytes(const SkeletonData& skeleton, std::uint32_t endian,
                       const std::string& fault = "");

/// Bytes from text such as "53 4B 30 38"; anything but hexadecimal digits is passed over.
std::string FromHex(std::string_view text);
/// Sixteen bytes a line, for messages that show where two files part.
std::string ToHex(std::string_view bytes);

/// What `work` prints to standard output.
std::string CaptureOutput(const std::function<void()>& work);
