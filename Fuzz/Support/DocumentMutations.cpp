#include "Support/DocumentMutations.h"

#include "Support/BakeInput.h"
#include "Support/ElementTreeMutator.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

namespace fs = std::filesystem;

namespace {

void LearnFolder(Vocabulary& vocabulary, const fs::path& folder) {
    std::vector<fs::path> paths;
    for (const auto& entry : fs::directory_iterator(folder))
        if (entry.path().extension() == ".qeli") paths.push_back(entry.path());
    std::sort(paths.begin(), paths.end());
    for (const fs::path& path : paths) {
        std::ifstream file(path, std::ios::binary);
        const std::string text(std::istreambuf_iterator<char>(file), {});
        if (std::optional<ElementDocument> document = ParseElements(text))
            vocabulary.Learn(std::move(*document));
    }
}

/// The flag bytes of an input, or others.
std::string Flags(std::string_view input, Random& random) {
    std::string flags(input.substr(0, CountFlagBytes(input)));
    if (!random.OneIn(16)) return flags;
    if (random.OneIn(8)) return "";
    return {static_cast<char>(0x80 | random.Below(128)), static_cast<char>(random.Below(256))};
}

std::string_view WithoutFlags(std::string_view input) {
    return input.substr(CountFlagBytes(input));
}

}  // namespace

const Vocabulary& DocumentVocabulary() {
    static Vocabulary vocabulary;
    static const bool isLearnt = [] {
        const fs::path root = RIGBAKE_SOURCE_ROOT;
        for (const char* folder : {"Tests/Documents", "Examples", "Fuzz/Seeds/Bake"})
            LearnFolder(vocabulary, root / folder);
        return true;
    }();
    static_cast<void>(isLearnt);
    return vocabulary;
}

std::string MutateDocument(std::string_view input, std::uint64_t seed) {
    Random random(seed);
    const std::string flags = Flags(input, random);
    std::optional<ElementDocument> document = ParseElements(WithoutFlags(input));
    if (!document) return "";
    ElementTreeMutator(DocumentVocabulary()).Mutate(*document, random);
    return flags + WriteElements(*document);
}

std::string CrossDocuments(std::string_view input, std::string_view other, std::uint64_t seed) {
    Random random(seed);
    const std::string flags = Flags(input, random);
    std::optional<ElementDocument> document = ParseElements(WithoutFlags(input));
    const std::optional<ElementDocument> donor = ParseElements(WithoutFlags(other));
    if (!document || !donor) return "";
    ElementTreeMutator(DocumentVocabulary()).CrossOver(*document, *donor, random);
    return flags + WriteElements(*document);
}
