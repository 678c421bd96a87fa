#include <BiffLib/CBlock.h>
#include <QelTools/Exception.h>

#include <algorithm>
#include <cerrno>
#include <ostream>
#include <system_error>
#include <utility>

#include "ImageBuffer.h"

namespace Biff {

namespace {

// Callers tell a file that cannot be opened from other failures by this very text.
constexpr char kCannotOpen[] = "Failed to open file for Biff write.";

std::string LastError() {
    const int number = errno != 0 ? errno : EIO;
    return std::generic_category().message(number);
}

// Gives the reason when the file did not take the whole image, and else an empty text.
std::string Save(const ImageBuffer& buffer, std::FILE* file) {
    const std::vector<char>& image = buffer.Image();
    if (image.empty()) return {};
    errno = 0;
    const bool whole = std::fwrite(image.data(), 1, image.size(), file) == image.size();
    return whole && std::fflush(file) == 0 ? std::string() : LastError();
}

std::string LayOutAndSave(CBlock& block, std::uint32_t expectedSize, std::FILE* file,
                          std::uint32_t endian) {
    const long start = std::max(std::ftell(file), 0L);
    ImageBuffer buffer(start, expectedSize);
    std::ostream stream(&buffer);
    try {
        block.Write(stream, endian);
    } catch (...) {
        // What was laid out helps to see what went wrong; the failure itself is what counts.
        Save(buffer, file);
        throw;
    }
    return Save(buffer, file);
}

class OutputFile {
  public:
    explicit OutputFile(const std::string& path) : file(std::fopen(path.c_str(), "wb")) {
        if (file == nullptr) throw QelTools::Common::TextException(kCannotOpen);
    }
    ~OutputFile() {
        if (file != nullptr) std::fclose(file);
    }
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    std::FILE* Get() const { return file; }

    // Some systems tell only here that a file did not fit. Gives the reason, or an empty text.
    std::string Close() {
        errno = 0;
        return std::fclose(std::exchange(file, nullptr)) == 0 ? std::string() : LastError();
    }

  private:
    std::FILE* file;
};

}  // namespace

void CBlock::WriteFile(std::FILE* stream, std::uint32_t endian) {
    const std::string failure = LayOutAndSave(*this, SizeAt(0), stream, endian);
    if (!failure.empty())
        QelTools::Common::ThrowException("Failed to write the Biff file: " + failure + ".");
}

void CBlock::WriteToPath(const std::string& path, std::uint32_t endian) {
    OutputFile file(path);
    std::string failure = LayOutAndSave(*this, SizeAt(0), file.Get(), endian);
    if (failure.empty()) failure = file.Close();
    if (!failure.empty())
        QelTools::Common::ThrowException("Failed to write \"" + path + "\": " + failure + ".");
}

}  // namespace Biff
