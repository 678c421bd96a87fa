#include <VokLib/Objects/Shading/VokRenderState.h>

bool VokRenderState::IsDefault() const {
    return !overriden && alphaBlend == AlphaBlend{} && alphaTest == AlphaTest{} && zWrite &&
           zTest == ZTest{} && backfaceCulling;
}
