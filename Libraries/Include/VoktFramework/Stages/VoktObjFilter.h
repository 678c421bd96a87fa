#pragma once

class VokObj;

/// Decides which scene objects a stage takes. A tool that wants a choice of its own hands one to
/// its stages.
class VoktObjFilter {
  public:
    virtual ~VoktObjFilter() = default;
    virtual bool Accepts(const VokObj& object) const = 0;
};
