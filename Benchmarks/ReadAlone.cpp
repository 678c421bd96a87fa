// ReadAlone FILE reads the file in blocks of one mebibyte and does nothing with them.

#include <cstdio>
#include <memory>

int main(int count, char** arguments) {
    std::FILE* const file = count == 2 ? std::fopen(arguments[1], "rb") : nullptr;
    if (file == nullptr) return 1;
    std::setvbuf(file, nullptr, _IONBF, 0);
    constexpr std::size_t kBlockBytes = 0x100000;
    const auto block = std::make_unique_for_overwrite<char[]>(kBlockBytes);
    while (std::fread(block.get(), 1, kBlockBytes, file) == kBlockBytes) {
    }
    std::fclose(file);
    return 0;
}
