#pragma once

/// Whether a program may leave its last world, and the library in which the world's links stand, to
/// the end of the process, which gives their memory back at once. Builds that look for leaks take
/// everything apart.
inline constexpr bool kLeavesWorlds = RIGBAKE_LEAVES_WORLDS != 0;
