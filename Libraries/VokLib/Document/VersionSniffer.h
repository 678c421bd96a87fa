#pragma once

#include <cstddef>
#include <string>

/// The default namespace of the first element named "QEL" in a document's first block; empty when
/// the block is well formed and holds no such element, or one without a default namespace. A fault
/// in front of that element throws a VokException "Libxml2 parse error: Line ... Column ...". What
/// follows the element is not looked at.
std::string SniffVersion(const char* bytes, std::size_t size, const std::string& documentName);
