#pragma once

#include "Links/NameIndex.h"

#include <cstddef>
#include <optional>
#include <string_view>

/// A name that is looked for in one place after another. It can be as long as a document, so its
/// hash is made once, when it is first needed. Lives no longer than its text and the place for the
/// hash, which is empty as long as none was made.
class SoughtName {
  public:
    SoughtName(std::string_view name, std::optional<std::size_t>& hashOfName)
        : text(name), hash(&hashOfName) {}

    std::string_view GetText() const { return text; }
    std::size_t GetHash() const {
        if (!hash->has_value()) *hash = NameIndex::HashOf(text);
        return **hash;
    }

  private:
    std::string_view text;
    std::optional<std::size_t>* hash;
};
