#pragma once

#include <libxml/tree.h>

#include <ostream>

/// Writes the elements, attributes, namespace declarations and texts of `document`, and nothing
/// else, for the reader. Attributes lose their prefixes; "<" in their values and characters that
/// only a reference can express are written as they are.
void WritePlain(std::ostream& out, const xmlDoc& document);
