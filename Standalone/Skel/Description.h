#pragma once

#include "Names.h"
#include "SkeletonFile.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

/// Everything that a skeleton file says, taken apart for people: indices in place of offsets and
/// slots, names in place of hashes where they are known. -1 is none.
namespace Description {

using Four = std::array<float, 4>;

struct Joint {
    std::optional<std::uint32_t> hash;  ///< none for a joint that the table of hashes leaves out
    std::optional<std::string> name;
    std::string label;  ///< the name, else the hash, else the index: "Hips", "0x811C56D0", "#3"
    int parent = -1;
    int nextSibling = -1;
    int firstChild = -1;
    bool scaleCompensate = false;
    Four rotation = {};  ///< quaternion x, y, z, w
    std::array<float, 3> translation = {};
    std::array<float, 3> scale = {};
    /// How many rows of the level of detail table drop the joint when they are dropped: 0 for a
    /// joint that always stays.
    int level = 0;
};

struct LodRow {
    int members = 0;  ///< as the file counts them
    int limit = 0;    ///< joints that are left when this row and those behind it are dropped
    std::vector<int> remap;
};

struct ExternalChannel {
    std::uint32_t hash = 0;
    std::uint32_t kind = 0;  ///< SKELETON_EXTERNAL_...
    std::string label;       ///< the name, else the hash
    std::optional<std::string> name;
};

/// One number that a driven key reads or writes.
struct Channel {
    std::uint32_t type = 0;       ///< SKELETON_CHANNEL_...
    std::uint32_t index = 0;      ///< as the file has it
    std::uint32_t component = 0;  ///< 0 x, 1 y, 2 z; up to 3 for a material
    int joint = -1;               ///< of the first three types, if it is known
    std::string label;            ///< "Hips.rotateX", "smile", "wetness[2]"
};

struct Curve {
    Channel input;
    float firstTime = 0;
    float lastTime = 0;
    std::vector<float> times;
    std::vector<Four> coefficients;
};

struct Output {
    Channel target;
    std::vector<Curve> curves;
};

struct DrivenObject {
    int joint = -1;
    std::uint32_t rotationOrder = 0;
    Four rotationAxis = {};
    Four jointOrient = {};
};

struct DrivenKeys {
    std::uint32_t objectCount = 0;
    std::uint32_t drivenObjectCount = 0;
    std::vector<DrivenObject> objects;  ///< the rows; fewer than objectCount where some are missing
    std::vector<Output> outputs;
};

enum class ConstraintKind { Orientation, Translation, Scale, Aim, Parent };

/// One entry of a list: a target of a constraint. What a kind does not have stays zero.
struct Target {
    int joint = -1;
    float weight = 0;
    Four offset = {};  ///< translation and scale constraints
    Four aim = {}, up = {}, globalUp = {};
    std::uint32_t worldUp = 0;  ///< SKELETON_WORLD_UP_...
    int upObject = -1;
    Four translation = {}, rotation = {};  ///< parent constraints
};

struct Constraint {
    ConstraintKind kind = ConstraintKind::Orientation;
    int joint = -1;
    std::vector<Target> targets;
};

struct JointConstraints {
    std::vector<int> written;  ///< joints, by ascending index
    std::vector<int> read;
    std::vector<Constraint> constraints;  ///< in the file's order of kinds
};

using Item = std::variant<DrivenKeys, JointConstraints>;

struct Skeleton {
    bool isBigEndian = false;
    std::size_t size = 0;
    std::uint32_t signature = 0;
    std::vector<Joint> joints;
    std::vector<LodRow> lods;
    std::vector<ExternalChannel> externalInputs, externalOutputs;
    std::vector<Item> items;  ///< in the order of their evaluation
};

Skeleton Describe(const SkeletonFile& file, const Names& names);

/// "0x811C56D0"
std::string HashText(std::uint32_t hash);
/// "Hips", or "none" for -1.
const std::string& LabelOf(const Skeleton& skeleton, int joint);
/// "aim"
const char* KindText(ConstraintKind kind);
/// "blend shape controller"
const char* ExternalKindText(std::uint32_t kind);
/// "zyx"
const char* RotationOrderText(std::uint32_t order);

}  // namespace Description
