#pragma once

#include <vector>

class VokObj;
class VokParse;

/// Thrown by every look at contents that were left out: a VokException with `owner`'s path.
[[noreturn]] void ThrowNotLoaded(const VokObj* owner);

/// Contents of an object that many users of a scene never look at: vertices, weights, knots. A
/// reader that leaves contents out (VokParse::SetWanted) has checked their text and kept nothing
/// of it; asking for them then throws.
template <class T>
class VokBulk {
  public:
    /// `object` holds these contents and must outlive them.
    explicit VokBulk(const VokObj* object) : owner(object) {}

    /// Throws a VokException "contents were not loaded" when they were left out.
    const std::vector<T>& Get() const {
        if (leftOut) ThrowNotLoaded(owner);
        return values;
    }
    std::vector<T>& Edit() {
        if (leftOut) ThrowNotLoaded(owner);
        return values;
    }
    bool IsLoaded() const { return !leftOut; }
    /// There are contents in the document, and they are not here.
    void LeaveOut() { leftOut = true; }

    /// Takes `count` values from the text of the element in hand, as VokTextReader does for a
    /// vector; where contents are left out their number alone is looked at. For float, int,
    /// unsigned and bool.
    void Read(VokParse& parse, long long count);

  private:
    const VokObj* owner;
    std::vector<T> values;
    bool leftOut = false;
};
