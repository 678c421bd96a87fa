#pragma once

#include "Support/Random.h"

#include <string>

/// A number at the edge of something: 0, -1, the bounds of int and float, nan, no number at all.
std::string OddNumber(Random& random);

/// Whether a text is a list of numbers, or one.
bool IsNumbers(const std::string& text);

/// One of the numbers of `text` becomes another one, a neighbour, or an odd one; or one is added or
/// left out.
std::string ChangeNumbers(const std::string& text, Random& random);
