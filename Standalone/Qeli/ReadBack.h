#pragma once

#include <string>

class VokObj;
class VokWorld;

/// Throws a VokException that names the first object of `world` whose markup no reader would
/// accept; returns when there is none.
void CheckMarkup(VokWorld& world);

/// Throws a VokException that names the first object which `readBack`, what was written of
/// `written`, holds otherwise, also where that shows in a bake alone.
void CheckReadBack(VokWorld& written, VokWorld& readBack);
