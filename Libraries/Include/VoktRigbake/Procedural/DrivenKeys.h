#pragma once

#include <VoktRigbake/Procedural/ChannelReference.h>
#include <VoktRigbake/Skeleton/SkeletonIndex.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <list>
#include <string>
#include <unordered_map>
#include <vector>

namespace Biff {
class CBlock;
}
class VokAnimChannel;
class VokBlend;
struct ProceduralJoints;

/// The key at which a segment starts; its value is c0 + c1 d + c2 d^2 + c3 d^3 with d the distance
/// from `time`.
struct DrivenKey {
    float time = 0;
    std::array<float, 4> coefficients{};
};

/// A curve over the value of its input.
struct DrivenCurve {
    float firstTime = 0;
    float lastTime = 0;
    const VokObj* inputObject = nullptr;  ///< a joint or null
    DrivenChannelType inputType = DrivenChannelType::External;
    std::uint32_t inputComponent = 0;
    std::uint32_t inputHash = 0;
    std::int32_t inputIndex = -1;
    std::vector<DrivenKey> keys;  ///< two at least
};

/// One driven channel; its value is made of those of its curves.
struct DrivenOutput {
    const VokObj* object = nullptr;  ///< null for a blend without a target
    DrivenChannelType type = DrivenChannelType::External;
    std::uint32_t channelHash = 0;
    std::uint32_t component = 0;
    std::int32_t index = -1;
    std::vector<DrivenCurve> curves;
};

/// The driven keys of one stage of the procedural evaluation. Points into the scene and must not
/// outlive it.
class DrivenKeys {
  public:
    /// Adds a channel whose input object is `inputObject`, which may be null; what is no joint
    /// counts as null. The channel becomes QELCurve in place. Nothing is added for a channel
    /// outside an anim, for one that is no driven key and for one that cannot become QELCurve. New
    /// external channels enter `procedural`.
    ///
    /// Throws a VokException for an anim without a target, for a channel of several values and for
    /// translation or scale of a joint outside the skeleton, a QelTools Exception for fewer than
    /// two keys and for an external input that is in use already, and what the conversion and the
    /// hash registry throw.
    void AddChannel(VokAnimChannel& channel, const VokObj* inputObject,
                    ProceduralJoints& procedural, const SkeletonIndex& skeleton);

    /// Makes of all outputs on one blend a single output on the blend's target, for every blend.
    /// The place is that of the first of them. Channels are added before, not after. New external
    /// channels enter `procedural` at once, the outputs follow in MoveOutputs().
    void ApplyBlends(const SkeletonIndex& skeleton, ProceduralJoints& procedural);
    /// Brings the outputs to where the applied blends lead. To be called when all are applied,
    /// before what follows.
    void MoveOutputs();

    /// Appends the "DK04" block; `block` stands at a multiple of 16. The external channels of
    /// `procedural` are sorted. Throws a QelTools Exception for an input that is an external
    /// output, too.
    void Write(Biff::CBlock& block, const ProceduralJoints& procedural,
               const SkeletonIndex& skeleton) const;

    bool IsEmpty() const { return outputs.empty(); }
    const std::list<DrivenOutput>& GetOutputs() const { return outputs; }
    /// The objects whose rotation is read or written, in order of first use.
    const std::vector<const VokObj*>& GetObjects() const { return objects; }

  private:
    using OutputPlace = std::list<DrivenOutput>::iterator;
    struct OutputKey {
        const VokObj* object;
        std::uint32_t channelHash;
        bool operator==(const OutputKey&) const = default;
    };
    struct OutputKeyHash {
        std::size_t operator()(const OutputKey& key) const;
    };

    /// What owns an external channel.
    struct ExternalObject {
        bool hasName = false;
        std::uint32_t hash = ~0u;  // the complement of the CRC-32 of its name
    };

    ChannelReference Resolve(const std::string& channelText, const VokObj* object,
                             const SkeletonIndex& skeleton, ProceduralJoints& procedural,
                             bool isInput);
    ExternalObject FindOwner(const VokObj* object, ExternalChannelKind kind);
    void SetIndex(ChannelReference& reference, const VokObj* object, std::uint32_t objectHash,
                  const SkeletonIndex& skeleton, ProceduralJoints& procedural, bool isInput);
    std::int32_t FindOrAddObject(const VokObj* object);
    DrivenOutput& FindOrAddOutput(const VokObj* object, const ChannelReference& reference);
    /// The place in `blendTargets`, or kNone.
    std::size_t FindBlend(const VokObj* object) const;

    std::list<DrivenOutput> outputs;
    std::vector<OutputPlace> outputsOnBlends;    // in their order
    std::size_t blendStepCount = 0;              // how often blends were applied to them
    std::vector<const VokBlend*> reachedBlends;  // by the last of these steps, in their order
    std::vector<DrivenOutput> blendTargets;      // of each blend that was left; they have no curves
    std::vector<const VokObj*> objects;
    // For finding alone; never walked.
    std::unordered_map<OutputKey, OutputPlace, OutputKeyHash> outputPlaces;
    std::unordered_map<const VokObj*, std::int32_t> objectPlaces;
    std::unordered_map<const VokObj*, ExternalObject> owners;    // of external channels
    std::unordered_map<const VokObj*, std::size_t> blendPlaces;  // in `blendTargets`
};
