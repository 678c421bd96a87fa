#include "Support/ElementTreeMutator.h"

#include "Support/BakeInput.h"
#include "Support/DocumentMutations.h"
#include "Support/ToolFolder.h"

#include <VokLib/Library/VokLib.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>
#include <vector>

namespace fs = std::filesystem;

namespace {

/// The seeds of the bake fuzzer.
std::vector<std::string> Seeds() {
    std::vector<fs::path> paths;
    for (const auto& entry : fs::directory_iterator(RIGBAKE_SOURCE_ROOT "/Fuzz/Seeds/Bake"))
        if (entry.path().extension() == ".qeli") paths.push_back(entry.path());
    std::sort(paths.begin(), paths.end());
    std::vector<std::string> seeds;
    for (const fs::path& path : paths) {
        std::ifstream file(path, std::ios::binary);
        seeds.emplace_back(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
    }
    return seeds;
}

TEST(ElementTreeMutator, TheSameSeedMakesTheSameDocument) {
    for (const std::string& seed : Seeds()) {
        EXPECT_EQ(MutateDocument(seed, 7), MutateDocument(seed, 7));
        EXPECT_EQ(CrossDocuments(seed, Seeds().front(), 7),
                  CrossDocuments(seed, Seeds().front(), 7));
    }
}

TEST(ElementTreeMutator, NearlyEveryMutantIsAnotherDocument) {
    std::size_t changed = 0;
    std::size_t all = 0;
    for (const std::string& seed : Seeds())
        for (std::uint64_t number = 0; number < 40; ++number, ++all)
            if (MutateDocument(seed, number) != MutateDocument(seed, number + 1)) ++changed;
    EXPECT_GE(changed * 10, all * 8) << changed << " of " << all;
}

/// Chains of mutants, each made from the one before: what a fuzzer keeps and changes again.
TEST(ElementTreeMutator, FourOfFiveMutantsLoadAndHalfBake) {
    const VokLib library(true, true, true, true, true);
    const ToolFolder folder;
    std::size_t mutants = 0;
    std::size_t loaded = 0;
    std::size_t baked = 0;
    testing::internal::CaptureStdout();
    for (const std::string& seed : Seeds())
        for (std::uint64_t chain = 0; chain < 8; ++chain) {
            std::string document = seed;
            for (std::uint64_t step = 0; step < 4; ++step, ++mutants) {
                document = MutateDocument(document, chain * 100 + step);
                const BakeInput input = ReadBakeInput(document);
                folder.Write("scene.qeli", input.document);
                if (CanBeLoaded(folder, "scene.qeli")) ++loaded;
                if (Bake(folder, "scene.qeli", input).succeeded) ++baked;
            }
        }
    testing::internal::GetCapturedStdout();
    std::cout << mutants << " mutants, " << loaded << " loaded, " << baked << " baked\n";
    EXPECT_GE(loaded * 5, mutants * 4);
    EXPECT_GE(baked * 2, mutants);
}

}  // namespace
