#pragma once

#include <libxml/tree.h>

#include <cstddef>

/// How many bytes a reference to `entity` becomes when the references in its text are replaced,
/// too. One that leads back to itself, or deep down, counts as more than any limit.
std::size_t ReplacedSize(const xmlEntity& entity);
