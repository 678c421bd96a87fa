#pragma once

#include "Support/Vocabulary.h"

#include <cstdint>
#include <string>
#include <string_view>

/// The words of the tests' documents and of the examples.
const Vocabulary& DocumentVocabulary();

/// A changed input of the bake fuzzer: now and then other flags, otherwise a document with other
/// elements. The same one for the same seed. Empty where the document cannot be taken apart.
std::string MutateDocument(std::string_view input, std::uint64_t seed);
std::string CrossDocuments(std::string_view input, std::string_view other, std::uint64_t seed);
