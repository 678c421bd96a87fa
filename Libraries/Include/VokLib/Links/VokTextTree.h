#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

/// A set of texts that share their beginnings: a radix tree of bytes. What is appended is looked
/// at once, so that time and memory follow what was appended, not the lengths of the texts. It
/// holds views of what is appended, which must stay as it is.
class VokTextTree {
  public:
    /// A place in a text that was appended; it stays good.
    using Place = std::uint32_t;
    static constexpr Place kStart = 0;

    /// The place behind `text`, appended at a place; the same for the same whole text.
    Place Append(Place place, std::string_view text);
    /// What ends at the place is one of the set.
    void Add(Place place);

    /// How many texts the set has.
    std::size_t Count() const { return count; }
    /// Hands over the texts in the order of their bytes, each while it is called, until `visit`
    /// says false.
    void VisitTexts(const std::function<bool(const std::string&)>& visit) const;

  private:
    struct Node {
        std::string_view label;  // what stands behind the parent's text; empty at the start only
        Place firstChild;        // by the first bytes of their labels; kStart for none
        Place nextSibling;
        bool isText;
    };

    Place& LinkToChild(Place parent, char first);
    void Split(Place& link, std::size_t length);

    std::vector<Node> nodes = {{{}, kStart, kStart, false}};
    std::size_t count = 0;
};
