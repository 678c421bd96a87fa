#include <VokLib/Text/VokAttributes.h>
#include <VokLib/Text/VokFile.h>
#include <VokLib/Tree/VokObj.h>
#include <VokLib/Tree/VokScene.h>
#include <VokLib/Tree/VokWorld.h>

#include <vector>

namespace {

struct OpenElement {
    const VokObj* object;
    std::size_t nextChild;
};

/// Writes the element's start; false when one empty tag was all there is to write.
bool WriteStart(const VokObj& object, VokFile& file, VokAttributes& attributes) {
    attributes.Clear();
    object.WriteAttributes(attributes);
    if (object.IsWrittenEmpty() && object.GetChildCount() == 0 &&
        object.GetCustomData().GetCount() == 0) {
        file.EmptyTag(object.GetElementName(), attributes);
        return false;
    }
    file.OpenTag(object.GetElementName(), attributes);
    object.WriteContents(file);
    return true;
}

}  // namespace

void VokObj::Write(VokFile& file) const {
    VokAttributes attributes;
    std::vector<OpenElement> open;
    if (WriteStart(*this, file, attributes)) open.push_back({this, 0});
    while (!open.empty()) {
        const VokObj& object = *open.back().object;
        if (open.back().nextChild < object.GetChildCount()) {
            const VokObj* child = object.GetChild(open.back().nextChild++);
            if (WriteStart(*child, file, attributes)) open.push_back({child, 0});
        } else {
            object.WriteTail(file);
            file.CloseTag(object.GetElementName());
            open.pop_back();
        }
    }
}

void VokObj::WriteAttributes(VokAttributes& attributes) const {
    if (!IsHierarchy()) attributes.SetString("name", name);
}

bool VokObj::IsHierarchy() const {
    if (!name.empty() || !IsExactly(VokScene::TypeId()) || parent == nullptr ||
        !parent->IsExactly(VokWorld::TypeId()))
        return false;
    return static_cast<const VokWorld*>(parent)->GetHierarchy() == this;
}

void VokObj::WriteContents(VokFile&) const {}

void VokObj::WriteTail(VokFile& file) const {
    GetCustomData().Write(file);
}
