#include "Convert.h"

#include "FailureText.h"
#include "FileNames.h"
#include "LimitedBuffer.h"
#include "LoadDocument.h"
#include "OutputFile.h"
#include "ReadBack.h"

#include <VokLib/Base/VokException.h>
#include <VokLib/Text/VokDocumentFile.h>
#include <VokLib/Tree/VokWorld.h>

#include <iostream>
#include <memory>
#include <ostream>

namespace {

/// What a written document may take beyond so many times the document that it is made of. Defaults
/// that are written out come to less than twenty times.
constexpr std::size_t kFreeBytes = 64u << 20;
constexpr std::size_t kMostGrowth = 32;

/// Why a document of few bytes would be written with more than `limit`.
const char* CauseOfGrowth(std::size_t addedToFileNames, std::size_t limit) {
    if (addedToFileNames > limit / 2)
        return "its file names are written as they lead from the new place, and these are too long";
    return "its links are written with the whole paths of their targets, and these are too long";
}

LostSigns CheckWritten(VokWorld& world, const OutputFile& file, const std::string& out) {
    VokWorld readBack;
    try {
        LoadDocument(readBack, file.GetUnfinishedName(), out);
    } catch (const DocumentFailure& failure) {
        CheckMarkup(world);
        throw DocumentFailure(
            {out}, std::string("The written document cannot be read: ") + failure.what());
    }
    return CheckReadBack(world, readBack);
}

void Warn(const LostSigns& lost, const std::string& in) {
    if (lost.objects == 0) return;
    std::string words =
        "The written document may be baked otherwise: the format leaves out zeros, and with them "
        "the sign of a -0";
    if (lost.objects > 1) words += " (in " + std::to_string(lost.objects) + " objects)";
    std::cerr << WarningText({.file = in, .object = lost.firstPath}, words) << std::endl;
}

}  // namespace

void Convert(const std::string& in, const std::string& out) {
    VokWorld world;
    const std::size_t documentBytes = LoadDocument(world, in).bytes;
    OutputFile file(out);
    LostSigns lost;
    try {
        const std::size_t addedToFileNames =
            OutputFile::IsKept(out) ? MoveDocument(world, in, out) : 0;
        LimitedBuffer buffer(*file.GetStream().rdbuf(), kFreeBytes + kMostGrowth * documentBytes);
        std::ostream limited(&buffer);
        VokDocumentFile document(limited);
        world.Write(document);
        document.WriteRaw("\n");
        if (buffer.IsExceeded())
            throw DocumentFailure({in}, "The document would be written with more than " +
                                            std::to_string(buffer.GetLimit()) + " bytes: " +
                                            CauseOfGrowth(addedToFileNames, buffer.GetLimit()));
        if (!limited) file.GetStream().setstate(std::ios_base::badbit);
        file.Finish();
        lost = CheckWritten(world, file, out);
    } catch (const DocumentFailure&) {
        throw;
    } catch (const std::exception& failure) {
        const auto* fromObject = dynamic_cast<const VokException*>(&failure);
        const std::string object =
            fromObject != nullptr ? fromObject->GetCauseObject() : std::string();
        throw DocumentFailure({in, 0, 0, object}, WordsOf(failure));
    }
    file.Publish();
    Warn(lost, in);
}
