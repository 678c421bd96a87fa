#include <VokLib/VokScene.h>

#include <VokLib/VokCast.h>
#include <VokLib/VokWorld.h>

void VokScene::WriteAttributes(VokAttributes& attributes) const {
    // A scene element without a name attribute is what a reader merges into the hierarchy; with
    // one, be it empty, it would come back as a further scene. The hierarchy's own attributes are
    // never read.
    if (GetName().empty())
        if (const auto* world = ExactCast<VokWorld>(GetParent()))
            if (world->GetHierarchy() == this) return;
    VokElement::WriteAttributes(attributes);
}
