#include <BiffLib/CBlock.h>
#include <Platform/ErrorText.h>
#include <Platform/WholeFile.h>
#include <QelTools/Exception.h>

#include <algorithm>
#include <cerrno>
#include <ostream>

#include "ImageBuffer.h"

namespace Biff {

namespace {

// Callers tell a file that cannot be opened from other failures by this very text.
constexpr char kCannotOpen[] = "Failed to open file for Biff write.";

// 0 when the file took the whole image, else the system's error number.
int SaveTo(std::FILE* file, const ImageBuffer& buffer) {
    const std::vector<char>& image = buffer.Image();
    if (image.empty()) return 0;
    errno = 0;
    const bool whole = std::fwrite(image.data(), 1, image.size(), file) == image.size();
    if (whole && std::fflush(file) == 0) return 0;
    return errno != 0 ? errno : EIO;
}

// Hands the image to `save` and gives its error number.
template <class Save>
int LayOutAndSave(CBlock& block, std::uint32_t expectedSize, long start, std::uint32_t endian,
                  Save save) {
    ImageBuffer buffer(start, expectedSize);
    std::ostream stream(&buffer);
    // A lack of memory comes out as such.
    stream.exceptions(std::ios_base::badbit);
    try {
        block.Write(stream, endian);
    } catch (const QelTools::Common::TextException&) {
        // What was laid out helps to see what is wrong with the layout; that is what counts.
        save(buffer);
        throw;
    }
    return save(buffer);
}

[[noreturn]] void ThrowFailure(const std::string& what, int error) {
    QelTools::Common::ThrowException("Failed to write " + what + ": " + Platform::ErrorText(error) +
                                     ".");
}

}  // namespace

void CBlock::WriteFile(std::FILE* stream, std::uint32_t endian) {
    const int error =
        LayOutAndSave(*this, SizeAt(0), std::max(std::ftell(stream), 0L), endian,
                      [stream](const ImageBuffer& buffer) { return SaveTo(stream, buffer); });
    if (error != 0) ThrowFailure("the Biff file", error);
}

void CBlock::WriteToPath(const std::string& path, std::uint32_t endian) {
    Platform::WholeFile file;
    if (file.Open(path) != 0) throw QelTools::Common::TextException(kCannotOpen);
    const int error =
        LayOutAndSave(*this, SizeAt(0), 0, endian, [&file](const ImageBuffer& buffer) {
            return file.Save(buffer.Image().data(), buffer.Image().size());
        });
    if (error != 0) ThrowFailure("\"" + path + "\"", error);
}

}  // namespace Biff
