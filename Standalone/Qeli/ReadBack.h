#pragma once

#include <cstddef>
#include <string>

class VokObj;
class VokWorld;

/// Throws a VokException that names the first object of `world` whose markup no reader would
/// accept; returns when there is none.
void CheckMarkup(VokWorld& world);

/// Objects with a -0 that the format leaves out together with the other zeros of a transform.
struct LostSigns {
    std::size_t objects = 0;
    std::string firstPath = {};
};

/// Throws a VokException that names the first object which `readBack`, what was written of
/// `written`, holds otherwise, also where that shows in a bake alone. Gives the differences that
/// the format cannot help.
LostSigns CheckReadBack(VokWorld& written, VokWorld& readBack);
