#include <VokLib/Tree/VokDependencies.h>

#include <VokLib/CustomData/VokCustomAttributeFilename.h>
#include <VokLib/Tree/VokObj.h>

#include "Tree/TreeWalk.h"

namespace {

/// Calls `visit` with each custom attribute of type filename and each index that holds a value.
template <class Visit>
void ForEachFilename(const VokCustomData* data, Visit visit) {
    if (data == nullptr) return;
    std::vector<int> indices;
    for (std::size_t i = 0; i < data->GetCount(); ++i) {
        auto* attribute = dynamic_cast<VokCustomAttributeFilename*>(&data->GetAttribute(i));
        if (attribute == nullptr) continue;
        indices.clear();
        attribute->GetIndices(indices);
        for (const int index : indices) visit(*attribute, index);
    }
}

const std::string& GetFilename(const VokCustomAttributeFilename& attribute, int index) {
    return attribute.IsArray() ? attribute.GetValueAt(index) : attribute.GetValue();
}

}  // namespace

VokUpdateDependencies::~VokUpdateDependencies() = default;

void VokDependencies::Add(const std::string& file) {
    if (!file.empty() && known.insert(file).second) files.push_back(file);
}

bool VokObj::GetDependencies(VokDependencies& files) const {
    ForEachFilename(customData.get(),
                    [&files](const VokCustomAttributeFilename& attribute, int index) {
                        files.Add(GetFilename(attribute, index));
                    });
    return true;
}

bool VokObj::UpdateDependencies(VokUpdateDependencies& update) {
    ForEachFilename(customData.get(), [&](VokCustomAttributeFilename& attribute, int index) {
        const std::string& file = GetFilename(attribute, index);
        if (file.empty()) return;
        std::string translated;
        update.Translate(translated, file, this);
        if (attribute.IsArray())
            attribute.SetValueAt(index, std::move(translated));
        else
            attribute.SetValue(std::move(translated));
    });
    return true;
}

void CollectDependencies(const VokObj& root, VokDependencies& files) {
    WalkTree(root, [&files](const VokObj& object) { return object.GetDependencies(files); });
}

void RewriteDependencies(VokObj& root, VokUpdateDependencies& update) {
    WalkTree(root, [&update](VokObj& object) { return object.UpdateDependencies(update); });
}
