#pragma once

#include "Description.h"
#include "Json.h"

#include <iosfwd>

/// Everything in the file, for scripts; docs/skel-dump.schema.json tells the form. Numbers that are
/// infinite are null, as JSON has none.
Json DumpJson(const Description::Skeleton& skeleton);

/// Everything in the file, for reading.
void DumpText(const Description::Skeleton& skeleton, std::ostream& out);

/// A float as short as it reads back, in no locale.
std::string NumberText(float number);
/// "(0, 1, 0.5)"
template <class Numbers>
std::string VectorText(const Numbers& numbers) {
    std::string text;
    for (const float number : numbers) text += (text.empty() ? "(" : ", ") + NumberText(number);
    return text + ")";
}
