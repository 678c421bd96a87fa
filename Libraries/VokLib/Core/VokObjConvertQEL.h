#pragma once

#include <VokLib/VokObjConvert.h>

/// The conversions of this format: node to joint.
class VokObjConvertQEL : public VokObjConvert {
  public:
    VokObjConvertQEL();
};
