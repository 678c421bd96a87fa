#pragma once

#include <cstddef>

/// What a document may hold. The bounds are far above what any exporter writes and low enough that
/// no document costs time or memory out of proportion to its size. Each refusal names the limit,
/// its value and the place.
namespace VokLimits {

/// Elements open at one time.
inline constexpr std::size_t kMaxElementDepth = 10000;
/// Attributes of one start tag: the parser compares each with all before it.
inline constexpr std::size_t kMaxAttributes = 256;
/// Bytes of one tag, comment, instruction or CDATA section, from its "<" to its ">".
inline constexpr std::size_t kMaxMarkupBytes = 4u << 20;
/// Bytes of the document type with its internal subset.
inline constexpr std::size_t kMaxDoctypeBytes = 128u << 10;
/// Choices ("|") in its declarations: the parser compares each word of a list with all before it.
inline constexpr std::size_t kMaxDoctypeChoices = 4096;
/// Different names of elements, attributes and instructions: the parser's table of names does not
/// grow with them.
inline constexpr std::size_t kMaxNames = 10000;
/// Values that counts may claim beyond what the text holds, apart from one for each byte of the
/// document.
inline constexpr std::size_t kFreePaddedValues = 1u << 16;

// A document of an old version is held as a tree while it is brought up to date.

/// Bytes of such a document: its tree, with the one that a stage makes of it, takes up to 120 times
/// as many, where all is elements and texts of one letter.
inline constexpr std::size_t kMaxOldDocumentBytes = 1u << 30;
/// Elements inside one element: with the texts between them they fill half of what the stylesheets
/// can look at together.
inline constexpr std::size_t kMaxOldChildren = 5000000;
/// Different names and short texts.
inline constexpr std::size_t kMaxOldNames = 100000;
/// Namespaces declared on an element and those around it: each name with a prefix is looked up
/// among them, in the tree and by each stage.
inline constexpr std::size_t kMaxOldNamespaces = 100;
/// Steps of the searches for declarations of namespaces, each to one more of the elements around a
/// name: of an attribute with a prefix up to the root, of an element that is not in the namespace
/// of the one around it once and once for each namespace declared there, of any other up to where
/// its prefix is declared or borne. So many, and so many more for each byte of the document. The
/// stages take up to 0.3 microseconds for each where they are ten thousand deep.
inline constexpr std::size_t kFreeSearches = 8u << 20;
inline constexpr std::size_t kSearchesPerByte = 4;
/// Bytes that its document type may add, as entities and default attributes, beyond twice the bytes
/// of the document.
inline constexpr std::size_t kFreeAddedBytes = 4u << 20;

/// Bytes of the texts that tell of links without a target; the rest is counted.
inline constexpr std::size_t kMaxUnresolvedText = 16u << 20;

/// Objects that hold one another without being parents (a shape its blend targets, a mesh its blind
/// data): these are written and deleted one inside the other.
inline constexpr int kMaxHeldDepth = 256;

}  // namespace VokLimits
