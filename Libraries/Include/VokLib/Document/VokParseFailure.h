#pragma once

#include <cstddef>
#include <string>
#include <vector>

class VokParse;

/// Where a load stopped, for a tool that shows the user the place; the exception tells the reason.
struct VokParseFailure {
    /// The place that the parser had reached in the document, from 1. Both are 0 where no place is
    /// to blame (a file that does not open, a link without a target) and for a document that was
    /// brought up to the current version first, for the places of its new text help nobody.
    int line = 0;
    int column = 0;
    /// The path of the object that was being read; empty for none.
    std::string object;
    /// The first kMostLinks of the links without a target, each as "owner->path", sorted; fewer
    /// where they are longer together than VokLimits::kMaxUnresolvedText.
    static constexpr std::size_t kMostLinks = 20;
    std::vector<std::string> unresolvedLinks;
    /// How many there are in all.
    std::size_t unresolvedCount = 0;
};

/// What stopped the last load of `reader`; empty when nothing did. Valid until its next load.
const VokParseFailure& GetParseFailure(const VokParse& reader);
