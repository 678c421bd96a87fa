#pragma once

#include <libxml/tree.h>

#include <cstddef>

/// What one reference to an entity puts into a document, other entities inside it replaced as well.
/// Each number ends at the greatest where it would be more.
struct EntitySize {
    std::size_t bytes = 0;    // and some for each reference
    std::size_t names = 0;    // of elements and attributes
    std::size_t depths = 0;   // of these names, added up: elements around each inside the entity
    std::size_t deepest = 0;  // elements inside one another
    std::size_t spaces = 0;   // declarations of namespaces
};

EntitySize ReplacedSize(const xmlEntity& entity);
