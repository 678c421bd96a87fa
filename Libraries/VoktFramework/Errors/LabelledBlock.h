#pragma once

#include <iosfwd>
#include <string>

/// Writes `label`, ": " and `value` at an indentation of four blanks for each level. The further
/// lines of a value of several lines stand under its first one; CR LF and a lone CR end a line as
/// LF does.
void PrintLabelledBlock(std::ostream& stream, int level, const std::string& label,
                        const std::string& value);
