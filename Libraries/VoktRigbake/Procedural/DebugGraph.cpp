#include "Procedural/DebugGraph.h"

#include <Platform/OpenForShowing.h>
#include <Platform/Process.h>
#include <Platform/TemporaryFile.h>
#include <VokLib/Objects/Animation/VokAnim.h>
#include <VokLib/Objects/Animation/VokAnimChannel.h>
#include <VokLib/Objects/Animation/VokBlend.h>
#include <VokLib/Objects/Constraints/VokAimConstraint.h>
#include <VokLib/Objects/Constraints/VokOrientationConstraint.h>
#include <VokLib/Objects/Constraints/VokParentConstraint.h>
#include <VokLib/Objects/Constraints/VokScaleConstraint.h>
#include <VokLib/Objects/Constraints/VokTranslationConstraint.h>
#include <VokLib/Objects/Nodes/VokJoint.h>

#include <array>
#include <cstdio>
#include <fstream>
#include <map>
#include <ostream>
#include <string>

namespace {

struct ObjectLook {
    VokTypeId type;
    const char* classText;
    const char* shapeText;
};

constexpr ObjectLook kLooks[] = {
    {VokJoint::TypeId(), "VokJoint", ""},
    {VokAimConstraint::TypeId(), "VokAimConstraint", ",shape=box"},
    {VokOrientationConstraint::TypeId(), "VokOrientationConstraint", ",shape=box"},
    {VokTranslationConstraint::TypeId(), "VokTranslationConstraint", ",shape=box"},
    {VokParentConstraint::TypeId(), "VokParentConstraint", ",shape=box"},
    {VokScaleConstraint::TypeId(), "VokScaleConstraint", ",shape=box"},
    {VokAnimChannel::TypeId(), "VokAnimChannel", ",shape=polygon,sides=4,skew=.4"},
    {VokAnim::TypeId(), "VokAnim", ",shape=polygon,sides=4,skew=.4"},
    {VokBlend::TypeId(), "VokBlend", ",shape=polygon,sides=4,skew=-.4"},
};

const ObjectLook* FindLook(const VokObj& object) {
    for (const ObjectLook& look : kLooks)
        if (object.IsA(look.type)) return &look;
    return nullptr;
}

std::string Hexadecimal(std::uint32_t number) {
    std::array<char, 9> digits{};
    std::snprintf(digits.data(), digits.size(), "%08x", number);
    return digits.data();
}

std::string ClassTextOf(const VokObj& object) {
    const ObjectLook* look = FindLook(object);
    return look != nullptr ? look->classText
                           : "VokSomething(0x" + Hexadecimal(object.GetTypeId()) + ")";
}

std::string ShapeTextOf(const VokObj& object) {
    const ObjectLook* look = FindLook(object);
    return look != nullptr ? look->shapeText : "";
}

/// A channel says whose it is: the part of its anim's name behind the last underscore.
std::string DisplayNameOf(const VokObj& object) {
    if (!object.IsA(VokAnimChannel::TypeId())) return object.GetName();
    const std::string& parent = object.GetParent()->GetName();
    return parent.substr(parent.rfind('_') + 1) + "::" + object.GetName();
}

std::string IdentityOf(const VokObj* object, const DocumentOrder& order) {
    return "x" + Hexadecimal(order.NumberOf(object));
}

/// False where no file is left in the end: a part of a graph would show that relations are absent.
bool WriteGraphFile(const Dependencies& dependencies, const std::string& path) {
    std::ofstream stream(path);
    if (!stream) return false;
    WriteGraph(dependencies, stream);
    stream.close();
    if (stream) return true;
    std::remove(path.c_str());
    return false;
}

}  // namespace

void PrintStages(const std::vector<Stage>& stages, std::ostream& stream) {
    for (std::size_t i = 0; i < stages.size(); ++i) {
        stream << "stage " << i << std::endl;
        for (const VokObj* object : stages[i].objects)
            stream << DisplayNameOf(*object) << " [" << ClassTextOf(*object) << "]" << std::endl;
    }
}

void WriteGraph(const Dependencies& dependencies, std::ostream& stream) {
    const DocumentOrder& order = dependencies.GetOrder();
    std::map<std::uint32_t, const VokObj*> objects;
    stream << "digraph test {\n";
    for (const Dependency& entry : dependencies.GetSorted()) {
        stream << IdentityOf(entry.before, order) << " -> " << IdentityOf(entry.after, order)
               << " ;\n";
        for (const VokObj* object : {entry.before, entry.after})
            objects.emplace(order.NumberOf(object), object);
    }
    for (const auto& [number, object] : objects)
        stream << IdentityOf(object, order) << " [label=\"" << DisplayNameOf(*object) << "\\n["
               << ClassTextOf(*object) << "]\"" << ShapeTextOf(*object) << "];\n";
    stream << "}\n";
}

void ShowGraph(const Dependencies& dependencies) {
    const std::optional<std::string> name = Platform::CreateTemporaryFile("DOT");
    if (!name.has_value()) return;
    const std::string graph = *name + ".dot";
    const std::string picture = *name + ".png";
    if (WriteGraphFile(dependencies, graph)) {
        if (Platform::RunPipeline(
                {{"unflatten", "-f", "-c5", "-l5", graph}, {"dot", "-Tpng", "-o", picture}}))
            Platform::OpenForShowing(picture);
        else
            std::remove(picture.c_str());
    }
    // It only kept the name; graph and picture stay for whoever looks at them.
    std::remove(name->c_str());
}
