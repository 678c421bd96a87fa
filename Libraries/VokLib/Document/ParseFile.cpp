#include "Document/ParseMachine.h"

#include <Platform/OpenForReading.h>
#include <Platform/ReadBytes.h>
#include <VokLib/Document/VokParse.h>
#include <VokLib/Tree/ThrowVokException.h>

#include <cerrno>
#include <cstdio>
#include <memory>
#include <new>

namespace {

constexpr std::size_t kBlockBytes = 0x100000;

}  // namespace

void VokParse::ParseFile(VokWorld& world, const std::string& path) {
    machine->ForgetResults();
    CheckFactories();
    errno = 0;
    const Platform::OpenedFile file = Platform::OpenForReading(path);
    if (file == nullptr && errno == ENOMEM) throw std::bad_alloc();
    if (file == nullptr) ThrowVokException("File open error: \"" + path + "\"");
    // Blocks are read straight into the buffer below.
    std::setvbuf(file.get(), nullptr, _IONBF, 0);

    const auto block = std::make_unique_for_overwrite<char[]>(kBlockBytes);
    std::uint32_t stage = kFirstBlock;
    std::size_t total = 0;
    do {
        const std::size_t count = Platform::ReadBytes(file.get(), block.get(), kBlockBytes);
        // A folder opens on some systems and fails here.
        if (std::ferror(file.get()) != 0)
            ThrowVokException((total + count == 0 ? "File open error: \"" : "File read error: \"") +
                              path + "\"");
        total += count;
        if (count < kBlockBytes) stage |= kLastBlock;
        ParseBuffer(world, block.get(), count, stage, path.c_str());
        stage &= ~kFirstBlock;
    } while (stage == 0);
    if (total == 0) ThrowVokException("Empty input qeli file: \"" + path + "\"");
}
