#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// An element of a document. Values and text stand as in the markup, entities included; of the text
/// only what follows the last child is kept, as readers of documents take no other.
struct Element {
    std::string name;
    std::vector<std::pair<std::string, std::string>> attributes;
    std::vector<Element> children;
    std::string text;

    /// Null without such an attribute.
    const std::string* Find(std::string_view attribute) const;
    std::string* Find(std::string_view attribute);
};

/// A root and the text ahead of it.
struct ElementDocument {
    std::string prolog;
    Element root;
};

/// Takes a document apart; nothing for a text that is not well-formed, has a document type, or
/// nests deeper than kMostNesting. Comments and instructions inside the root are dropped.
inline constexpr std::size_t kMostNesting = 200;
std::optional<ElementDocument> ParseElements(std::string_view text);

std::string WriteElements(const ElementDocument& document);

/// The number of elements at and below `element`.
std::size_t CountElements(const Element& element);
