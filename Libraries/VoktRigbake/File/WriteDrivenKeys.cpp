#include <VoktRigbake/Procedural/DrivenKeys.h>

#include "File/FileTables.h"

#include <QelTools/Exception.h>
#include <VokLib/Base/VokMath.h>
#include <VokLib/Objects/Nodes/VokJoint.h>
#include <VokLib/Tree/VokCast.h>
#include <VoktRigbake/Procedural/ProceduralJoints.h>

#include <array>

namespace {

struct CurveLabels {
    std::uint32_t coefficients = Biff::ReserveLabel();
    std::uint32_t times = Biff::ReserveLabel();
};

/// An output with the labels of its parts.
struct LabelledOutput {
    explicit LabelledOutput(const DrivenOutput& content)
        : output(content), ofCurves(content.curves.size()) {}

    const DrivenOutput& output;
    std::uint32_t curves = Biff::ReserveLabel();
    std::uint32_t target = Biff::ReserveLabel();
    std::vector<CurveLabels> ofCurves;
};

/// The objects of a block in the file's order: those that it drives come first.
class ObjectTable {
  public:
    explicit ObjectTable(const DrivenKeys& keys) {
        for (const DrivenOutput& output : keys.GetOutputs())
            if (output.type == DrivenChannelType::Rotation) Add(output.object);
        drivenCount = objects.size();
        for (const VokObj* object : keys.GetObjects()) Add(object);
    }

    std::uint32_t FindPlace(const VokObj* object) const { return places.at(object); }
    std::uint32_t GetDrivenCount() const { return static_cast<std::uint32_t>(drivenCount); }
    const std::vector<const VokObj*>& GetObjects() const { return objects; }

  private:
    void Add(const VokObj* object) {
        if (places.try_emplace(object, static_cast<std::uint32_t>(objects.size())).second)
            objects.push_back(object);
    }

    std::size_t drivenCount = 0;
    std::vector<const VokObj*> objects;
    std::unordered_map<const VokObj*, std::uint32_t> places;
};

std::uint32_t FindExternal(const ExternalChannels& channels, std::uint32_t hash) {
    const std::int32_t place = channels.FindPlace(hash);
    if (place == -1) QelTools::Common::ThrowInternalError();
    return static_cast<std::uint32_t>(place);
}

/// Appends one block.
class DrivenKeysWriter {
  public:
    DrivenKeysWriter(const DrivenKeys& content, const ProceduralJoints& whole,
                     const SkeletonIndex& index, Biff::CBlock& target)
        : procedural(whole), skeleton(index), block(target), objects(content) {
        for (const DrivenOutput& output : content.GetOutputs()) outputs.emplace_back(output);
    }

    void Write() {
        block.AppendAlign(kTableAlignment);
        AppendHeader();
        AppendJoints();
        AppendOutputs();
        AppendCurves();
        AppendTargets();
        AppendCoefficients();
        AppendTimes();
        BeginTable(block, endLabel);
    }

  private:
    void AppendHeader() {
        block.AppendMagic("DK04");
        AppendRelativeOffset(block, endLabel);
        block.AppendU32(static_cast<std::uint32_t>(objects.GetObjects().size()));
        block.AppendU32(objects.GetDrivenCount());
        AppendRelativeOffset(block, objectLabel);
        AppendRelativeOffset(block, rotationAxisLabel);
        AppendRelativeOffset(block, jointOrientLabel);
        block.AppendU32(static_cast<std::uint32_t>(outputs.size()));
        AppendRelativeOffset(block, outputLabel);
    }

    void AppendJoints() {
        // A joint outside the skeleton has no row, although the header counts it: an input may be
        // such a joint.
        std::vector<const VokJoint*> joints;
        for (const VokObj* object : objects.GetObjects())
            if (skeleton.Find(object) != -1) joints.push_back(ExactCast<VokJoint>(object));

        BeginTable(block, objectLabel);
        for (const VokJoint* joint : joints) {
            block.AppendU16(static_cast<std::uint16_t>(joint->rotation.order));
            block.AppendU16(static_cast<std::uint16_t>(skeleton.Find(joint)));
        }
        BeginTable(block, rotationAxisLabel);
        for (const VokJoint* joint : joints) AppendRotation(joint->rotationAxis);
        BeginTable(block, jointOrientLabel);
        for (const VokJoint* joint : joints) AppendRotation(joint->jointOrient);
    }

    void AppendRotation(const EulerRotation& rotation) {
        const VokQuaternion q = VokMath::EulerToQuaternion(rotation);
        block.AppendFloats(std::array{q.x, q.y, q.z, q.w});
    }

    void AppendOutputs() {
        BeginTable(block, outputLabel);
        for (const LabelledOutput& entry : outputs) {
            block.AppendU32(static_cast<std::uint32_t>(entry.output.curves.size()));
            AppendRelativeOffset(block, entry.curves);
            block.AppendU32(1);  // targets
            AppendRelativeOffset(block, entry.target);
        }
    }

    void AppendCurves() {
        block.AppendAlign(kTableAlignment);
        for (const LabelledOutput& entry : outputs) {
            block.AppendLabel(entry.curves);
            for (std::size_t i = 0; i < entry.ofCurves.size(); ++i)
                AppendCurve(entry.output.curves[i], entry.ofCurves[i]);
        }
    }

    void AppendCurve(const DrivenCurve& curve, const CurveLabels& curveLabels) {
        block.AppendU32(FindInputIndex(curve));
        block.AppendU16(static_cast<std::uint16_t>(curve.inputType));
        block.AppendU16(static_cast<std::uint16_t>(curve.inputComponent));
        block.AppendFloat(curve.firstTime);
        block.AppendFloat(curve.lastTime);
        block.AppendU32(static_cast<std::uint32_t>(curve.keys.size()));
        AppendRelativeOffset(block, curveLabels.coefficients);
        AppendRelativeOffset(block, curveLabels.times);
    }

    std::uint32_t FindInputIndex(const DrivenCurve& curve) const {
        if (curve.inputType == DrivenChannelType::Rotation)
            return objects.FindPlace(curve.inputObject);
        if (curve.inputType == DrivenChannelType::External)
            return FindExternal(procedural.externalInputs, curve.inputHash);
        return static_cast<std::uint32_t>(curve.inputIndex);
    }

    std::uint32_t FindOutputIndex(const DrivenOutput& output) const {
        if (output.type == DrivenChannelType::Rotation) return objects.FindPlace(output.object);
        if (output.type == DrivenChannelType::External)
            return FindExternal(procedural.externalOutputs, output.channelHash);
        return static_cast<std::uint32_t>(output.index);
    }

    void AppendTargets() {
        block.AppendAlign(kTableAlignment);
        for (const LabelledOutput& entry : outputs) {
            block.AppendLabel(entry.target);
            block.AppendU32(FindOutputIndex(entry.output));
            block.AppendU16(static_cast<std::uint16_t>(entry.output.type));
            block.AppendU16(static_cast<std::uint16_t>(entry.output.component));
        }
    }

    void AppendCoefficients() {
        block.AppendAlign(kTableAlignment);
        for (const LabelledOutput& entry : outputs)
            for (std::size_t i = 0; i < entry.ofCurves.size(); ++i) {
                block.AppendLabel(entry.ofCurves[i].coefficients);
                const std::vector<DrivenKey>& keys = entry.output.curves[i].keys;
                // No segment starts at the last key.
                for (std::size_t key = 0; key + 1 < keys.size(); ++key)
                    block.AppendFloats(keys[key].coefficients);
            }
    }

    void AppendTimes() {
        block.AppendAlign(kTableAlignment);
        for (const LabelledOutput& entry : outputs)
            for (std::size_t i = 0; i < entry.ofCurves.size(); ++i) {
                block.AppendLabel(entry.ofCurves[i].times);
                for (const DrivenKey& key : entry.output.curves[i].keys)
                    block.AppendFloat(key.time);
            }
    }

    const ProceduralJoints& procedural;
    const SkeletonIndex& skeleton;
    Biff::CBlock& block;
    const ObjectTable objects;
    std::vector<LabelledOutput> outputs;
    const std::uint32_t endLabel = Biff::ReserveLabel();
    const std::uint32_t objectLabel = Biff::ReserveLabel();
    const std::uint32_t rotationAxisLabel = Biff::ReserveLabel();
    const std::uint32_t jointOrientLabel = Biff::ReserveLabel();
    const std::uint32_t outputLabel = Biff::ReserveLabel();
};

}  // namespace

void DrivenKeys::Write(Biff::CBlock& block, const ProceduralJoints& procedural,
                       const SkeletonIndex& skeleton) const {
    DrivenKeysWriter(*this, procedural, skeleton, block).Write();
}
