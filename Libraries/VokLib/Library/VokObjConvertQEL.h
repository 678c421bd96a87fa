#pragma once

#include <VokLib/Library/VokObjConvert.h>

/// The conversions of this format: node to joint.
class VokObjConvertQEL : public VokObjConvert {
  public:
    VokObjConvertQEL();
};
