#pragma once

#include <libxml/tree.h>

#include <cstddef>

/// What one reference to an entity puts into a document, other entities inside it replaced as well.
/// Each number ends at the greatest where it would be more.
struct EntitySize {
    /// Of elements and attributes.
    struct Names {
        std::size_t count = 0;
        std::size_t depths = 0;  // added up: elements around each inside the entity
    };
    std::size_t bytes = 0;  // and some for each reference
    Names names;
    Names foreignNames;       // those of them that have a prefix, or declare a namespace
    std::size_t deepest = 0;  // elements inside one another
    std::size_t spaces = 0;   // declarations of namespaces
};

EntitySize ReplacedSize(const xmlEntity& entity);
