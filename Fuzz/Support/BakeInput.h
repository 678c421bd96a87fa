#pragma once

#include <string>
#include <string_view>
#include <vector>

/// An input of the bake fuzzer: a document, with two bytes ahead of it that choose the flags. A
/// document alone is baked in the usual way; flag bytes have their highest bit set, which the first
/// character of a document has not. A document whose keys span minutes is baked without a turn of
/// its animation, which costs what the animation is long, unless they are refused for their span.
struct BakeInput {
    std::vector<std::string> flags;  ///< all but names of files
    bool updatesOld = true;
    bool makesTwo = false;  ///< one file in each byte order
    bool writesLog = false;
    bool turnsAnimation = false;  ///< to another up axis, animation too
    std::string_view document;
};

BakeInput ReadBakeInput(std::string_view bytes);

/// The number of flag bytes at the front: none or two.
std::size_t CountFlagBytes(std::string_view bytes);
