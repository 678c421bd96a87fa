// Feeds a document to the reader in blocks whose size the input chooses. A load succeeds or throws;
// nothing else.

#include "DocumentMutator.h"

#include <VokLib/Document/VokParse.h>
#include <VokLib/Library/VokLib.h>
#include <VokLib/Tree/VokWorld.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <exception>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const VokLib library(true, true, true, true, true);
    if (size == 0) return 0;
    const char* text = reinterpret_cast<const char*>(data);
    // The last byte: a line feed or 0 for one block, else blocks of that many times 16 bytes,
    // behind a first one that holds the root.
    const std::size_t blockBytes = data[size - 1] == '\n' ? 0 : std::size_t{data[size - 1]} * 16;
    const std::size_t length = size - 1;
    try {
        VokWorld world;
        VokParse parse;
        parse.SetAllowUpdate(true);
        std::uint32_t stage = VokParse::kFirstBlock;
        for (std::size_t at = 0; (stage & VokParse::kLastBlock) == 0;
             stage &= ~VokParse::kFirstBlock) {
            const std::size_t wanted =
                blockBytes == 0 ? length : std::max(blockBytes, at == 0 ? std::size_t{512} : 0);
            const std::size_t block = std::min(wanted, length - at);
            if (at + block == length) stage |= VokParse::kLastBlock;
            parse.ParseBuffer(world, text + at, block, stage, "fuzz.qeli");
            at += block;
        }
    } catch (const std::exception&) {
    }
    return 0;
}
