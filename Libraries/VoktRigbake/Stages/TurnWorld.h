#pragma once

class VokWorld;

/// Turns a world to another up axis (0 is y, 1 is z); one that stands right already is left as it
/// is. Everything under the hierarchy comes under one new node that holds the turn, so that every
/// path gets longer while all objects stay the same.
///
/// With `changeAnimation` the turn also goes into the topmost joints, the bind matrices of all
/// skins, the poses of those joints, and, from z to y alone, their animation. What the animation
/// throws is passed on.
void TurnWorld(VokWorld& world, int upAxis, bool changeAnimation);
