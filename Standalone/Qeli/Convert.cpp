#include "Convert.h"

#include "FailureText.h"
#include "FileNames.h"
#include "Growth.h"
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

/// Failures of the file are kept by the file, which tells them when it is finished.
void Write(VokWorld& world, OutputFile& file, std::size_t limit) {
    LimitedBuffer buffer(*file.GetStream().rdbuf(), limit);
    std::ostream limited(&buffer);
    limited.exceptions(std::ios_base::badbit);
    try {
        VokDocumentFile document(limited);
        world.Write(document);
        document.WriteRaw("\n");
    } catch (const std::ios_base::failure&) {
        file.GetStream().setstate(std::ios_base::badbit);
    }
}

}  // namespace

void Convert(const std::string& in, const std::string& out) {
    VokWorld world;
    const std::size_t limit = MostWritten(LoadDocument(world, in).bytes);
    std::size_t addedToFileNames = limit;  // until it is known
    OutputFile file(out);
    LostSigns lost;
    try {
        addedToFileNames = OutputFile::IsKept(out) ? MoveDocument(world, in, out, limit) : 0;
        Write(world, file, limit);
        file.Finish();
        lost = CheckWritten(world, file, out);
    } catch (const DocumentFailure&) {
        throw;
    } catch (const GrowthBeyondLimit&) {
        throw DocumentFailure({in}, "The document would be written with more than " +
                                        std::to_string(limit) +
                                        " bytes: " + CauseOfGrowth(addedToFileNames, limit));
    } catch (const std::exception& failure) {
        const auto* fromObject = dynamic_cast<const VokException*>(&failure);
        const std::string object =
            fromObject != nullptr ? fromObject->GetCauseObject() : std::string();
        throw DocumentFailure({in, 0, 0, object}, WordsOf(failure));
    }
    file.Publish();
    Warn(lost, in);
}
