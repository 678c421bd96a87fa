#pragma once

#include <string>

/// Writes the document `in`, whatever its version, as a current one to `out`. It is read again
/// before it takes the name, so that nothing is left there that cannot be read or that says
/// something else. Throws a DocumentFailure; `out` is then as it was.
void Convert(const std::string& in, const std::string& out);
