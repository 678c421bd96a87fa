#pragma once

#include <VokLib/Document/VokParse.h>
#include <VokLib/Document/VokUpdate.h>
#include <VokLib/Library/VokLib.h>
#include <VokLib/Tree/VokObj.h>
#include <VokLib/Tree/VokWorld.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "Support/Document.h"
#include "Support/ThrownText.h"

/// Helpers for tests of the document reader.
namespace ParseTools {

inline void Parse(VokParse& parse, VokWorld& world, std::string_view document,
                  const char* filename = nullptr) {
    parse.ParseBuffer(world, document.data(), document.size(),
                      VokParse::kFirstBlock | VokParse::kLastBlock, filename);
}

/// In blocks of `blockBytes`, the first of at least `firstBytes`, so that it holds the root's start
/// tag.
inline void ParseInBlocks(VokParse& parse, VokWorld& world, std::string_view document,
                          std::size_t blockBytes, std::size_t firstBytes = 0,
                          const char* filename = nullptr) {
    std::uint32_t stage = VokParse::kFirstBlock;
    std::size_t at = 0;
    for (bool last = false; !last; stage = 0) {
        std::size_t size = std::max(blockBytes, at == 0 ? firstBytes : 0);
        last = document.size() - at <= size;
        if (last) size = document.size() - at;
        parse.ParseBuffer(world, document.data() + at, size,
                          stage | (last ? VokParse::kLastBlock : 0), filename);
        at += size;
    }
}

/// What a load of `document` throws, or "".
inline std::string LoadText(std::string_view document, const char* filename = nullptr) {
    VokWorld world;
    VokParse parse;
    return ThrownText([&] { Parse(parse, world, document, filename); });
}

/// Brings documents up by a table of its own instead of stylesheets.
class FakeUpdate : public VokUpdate {
  public:
    bool IsCompatible(const std::string& version) override {
        asked = version;
        return compatible;
    }
    void Update(std::ostream& out, InputBuffer& input, const std::string& version) override {
        asked = version;
        received.assign(input.GetData() != nullptr ? input.GetData() : "", input.GetSize());
        input.Free();
        isFreed = input.GetSize() == 0 && input.GetData() == nullptr;
        out << result;
    }

    bool compatible = false;
    bool isFreed = false;
    std::string asked;
    std::string received;
    std::string result;
};

/// The library with everything but the format update, which a test brings along.
class ReaderTest : public testing::Test {
  protected:
    VokLib library{true, true, true, true, false};
    std::unique_ptr<FakeUpdate> updateService = std::make_unique<FakeUpdate>();
    FakeUpdate& update = *updateService;
};

}  // namespace ParseTools
