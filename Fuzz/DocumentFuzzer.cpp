// Feeds a document to the reader in one block, and in blocks whose size the input chooses. A load
// succeeds or throws, and where the blocks end makes no difference: the same document is loaded, or
// none.

#include "DocumentMutator.h"

#include <VokLib/Document/VokParse.h>
#include <VokLib/Library/VokLib.h>
#include <VokLib/Text/VokDocumentFile.h>
#include <VokLib/Tree/VokWorld.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <numeric>
#include <sstream>
#include <string>
#include <string_view>

namespace {

struct Outcome {
    bool isLoaded = false;
    std::string words;  ///< the document as it would be written, or why it was refused
};

/// How a world would be written, which may be refused as well.
std::string Markup(VokWorld& world) {
    try {
        std::ostringstream stream;
        stream.exceptions(std::ios_base::badbit);
        VokDocumentFile file(stream);
        world.Write(file);
        return stream.str();
    } catch (const std::exception& failure) {
        return failure.what();
    }
}

/// Loads in blocks of so many bytes, behind a first one that holds the root; 0 stands for one
/// block.
Outcome Load(std::string_view text, std::size_t blockBytes) {
    try {
        VokWorld world;
        VokParse parse;
        parse.SetAllowUpdate(true);
        std::uint32_t stage = VokParse::kFirstBlock;
        for (std::size_t at = 0; (stage & VokParse::kLastBlock) == 0;
             stage &= ~VokParse::kFirstBlock) {
            const std::size_t wanted = blockBytes == 0
                                           ? text.size()
                                           : std::max(blockBytes, at == 0 ? std::size_t{512} : 0);
            const std::size_t block = std::min(wanted, text.size() - at);
            if (at + block == text.size()) stage |= VokParse::kLastBlock;
            parse.ParseBuffer(world, text.data() + at, block, stage, "fuzz.qeli");
            at += block;
        }
        return {true, Markup(world)};
    } catch (const std::exception& failure) {
        return {false, failure.what()};
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const VokLib library(true, true, true, true, true);
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    // Any number that most changes of the document change, too.
    const std::size_t blockBytes = 16 * (1 + std::accumulate(data, data + size, 0u) % 251);
    const Outcome whole = Load(text, 0);
    const Outcome inBlocks = Load(text, blockBytes);
    if (inBlocks.isLoaded == whole.isLoaded && (!whole.isLoaded || inBlocks.words == whole.words))
        return 0;
    std::fprintf(stderr, "DocumentFuzzer: in blocks of %zu bytes: %s\nin one: %s\n", blockBytes,
                 inBlocks.words.c_str(), whole.words.c_str());
    std::abort();
}
