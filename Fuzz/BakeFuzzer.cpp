// The whole bake in process, with documents of which most can be read, and what has to hold of it:
// a conversion changes nothing of the bake and nothing when it is done again, the file is one that
// engines accept, both byte orders hold the same, and memory stays in proportion to the document.

#include "DocumentMutator.h"
#include "Sanitizer/MemoryPeak.h"
#include "Support/ToolFolder.h"

#include <VokLib/Library/VokLib.h>
#include <skeleton/skeleton.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace {

constexpr const char* kDocument = "scene.qeli";
constexpr const char* kSpoken = "spoken.txt";

/// What a run may hold at one time: so many times the document, and so much whatever it is.
constexpr std::size_t kMostTimes = 200;
constexpr std::size_t kMostFree = 8u << 20;

struct Counts {
    std::size_t documents = 0;
    std::size_t loaded = 0;
    std::size_t baked = 0;
    std::size_t converted = 0;
    double mostMemory = 0;  ///< of what is allowed
};
Counts counts;

void PrintCounts() {
    std::fprintf(
        stderr,
        "BakeFuzzer: %zu documents, %zu loaded, %zu baked, %zu converted; most memory %.3f "
        "of what is allowed\n",
        counts.documents, counts.loaded, counts.baked, counts.converted, counts.mostMemory);
}

[[noreturn]] void Fail(const std::string& what) {
    std::fprintf(stderr, "BakeFuzzer: %s\n", what.c_str());
    std::abort();
}

const ToolFolder& Folder() {
    static const ToolFolder folder;
    return folder;
}

/// What the run said on standard output.
std::string TakeSpoken() {
    std::fflush(stdout);
    std::string text = Folder().Read(kSpoken).value_or("");
    if (std::freopen(Folder().PathOf(kSpoken).c_str(), "w", stdout) == nullptr)
        Fail("standard output is lost");
    return text;
}

BakeResult BakeOnce(const char* name, const BakeInput& input) {
    MemoryPeak::Reset();
    BakeResult result = Bake(Folder(), name, input);
    const double allowed =
        static_cast<double>(kMostFree) + static_cast<double>(kMostTimes * input.document.size());
    // Samples of a turned animation have limits of their own.
    const bool samples =
        input.turnsAnimation && input.document.find("keyTimes") != std::string_view::npos;
    const double share = samples ? 0 : static_cast<double>(MemoryPeak::Get()) / allowed;
    counts.mostMemory = std::max(counts.mostMemory, share);
    if (share > 1) Fail("a bake held " + std::to_string(MemoryPeak::Get()) + " bytes");
    const std::string spoken = TakeSpoken();
    const bool hasError = spoken.find("Error: ") != std::string::npos;
    if (result.succeeded == hasError) Fail("status and words do not agree: " + spoken);
    if (spoken.find("Error: 0 ") != std::string::npos) Fail("an unknown failure: " + spoken);
    const std::size_t wanted = result.succeeded ? (input.makesTwo ? 2 : 1) : 0;
    if (result.files.size() != wanted)
        Fail(std::to_string(result.files.size()) + " files: " + spoken);
    return result;
}

/// A file is sound for engines, or holds a number that is none, as its document did. False for the
/// latter, which is turned by nobody.
bool CheckSound(const std::string& file) {
    std::vector<skeleton_fault> faults(64);
    const auto find = [&] {
        return skeleton_find_faults(file.data(), file.size(), faults.data(), faults.size());
    };
    const std::size_t count = find();
    if (count > faults.size()) {
        faults.resize(count);
        find();
    }
    for (std::size_t i = 0; i < count; ++i)
        if (std::string_view(faults[i].text).find("not a number") == std::string_view::npos)
            Fail(std::string("a file has a fault: ") + faults[i].text);
    return count == 0;
}

void CheckFiles(const BakeResult& result) {
    bool isSound = true;
    for (const std::string& file : result.files) isSound = CheckSound(file) && isSound;
    if (!isSound) return;
    if (result.files.size() < 2) return;
    const std::string& little = result.files[0];
    const std::unique_ptr<char[]> turned(new char[little.size()]);
    std::copy(little.begin(), little.end(), turned.get());
    if (skeleton_swap(turned.get(), little.size(), nullptr) == 0) Fail("a file cannot be turned");
    if (std::string_view(turned.get(), little.size()) != result.files[1])
        Fail("the byte orders do not hold the same");
}

/// With zeros of one sign, in whichever byte order: documents leave out the zeros of defaults, and
/// their signs with them.
std::vector<std::string> WithoutSignsOfZeros(std::vector<std::string> files) {
    constexpr std::string_view kNegativeZeros[] = {{"\x80\0\0\0", 4}, {"\0\0\0\x80", 4}};
    for (std::string& file : files)
        for (std::size_t at = 0; at + 4 <= file.size(); at += 4)
            for (const std::string_view zero : kNegativeZeros)
                if (std::string_view(file).substr(at, 4) == zero) file.replace(at, 4, 4, '\0');
    return files;
}

void CheckConversion(const BakeInput& input, const BakeResult& baked) {
    const ConvertResult once = ConvertDocument(Folder(), kDocument);
    if (!once.document) {
        // What the format cannot hold is refused.
        if (once.failure.empty()) Fail("a conversion failed without a word");
        if (baked.succeeded || CanBeLoaded(Folder(), kDocument)) ++counts.loaded;
        return;
    }
    ++counts.loaded;
    ++counts.converted;
    Folder().Write(kDocument, *once.document);
    const ConvertResult twice = ConvertDocument(Folder(), kDocument);
    if (!twice.document) Fail("a converted document cannot be converted: " + twice.failure);
    if (*twice.document != *once.document) Fail("a second conversion changes the document");
    if (!input.updatesOld) return;  // then an old document fails where the converted one does not
    const BakeResult again = BakeOnce(kDocument, input);
    if (again.succeeded != baked.succeeded) Fail("a conversion changes the status of the bake");
    if (WithoutSignsOfZeros(again.files) != WithoutSignsOfZeros(baked.files))
        Fail("a conversion changes what is baked");
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    MemoryPeak::Install();
    static const VokLib library(true, true, true, true, true);
    Folder();
    TakeSpoken();
    // What old documents' links say, thousands of times.
    std::cerr.rdbuf(nullptr);
    std::atexit(PrintCounts);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const BakeInput input =
        ReadBakeInput(std::string_view(reinterpret_cast<const char*>(data), size));
    ++counts.documents;
    Folder().Write(kDocument, input.document);
    const BakeResult baked = BakeOnce(kDocument, input);
    if (baked.succeeded) {
        ++counts.baked;
        CheckFiles(baked);
    }
    CheckConversion(input, baked);
    return 0;
}
