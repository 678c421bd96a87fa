#include "Convert.h"

#include "FailureText.h"
#include "FileNames.h"
#include "LoadDocument.h"
#include "OutputFile.h"
#include "ReadBack.h"

#include <VokLib/Base/VokException.h>
#include <VokLib/Text/VokDocumentFile.h>
#include <VokLib/Tree/VokWorld.h>

#include <memory>

namespace {

void CheckWritten(VokWorld& world, const OutputFile& file, const std::string& out) {
    VokWorld readBack;
    try {
        LoadDocument(readBack, file.GetUnfinishedName(), out);
    } catch (const DocumentFailure& failure) {
        CheckMarkup(world);
        throw DocumentFailure(
            {out}, std::string("The written document cannot be read: ") + failure.what());
    }
    CheckReadBack(world, readBack);
}

}  // namespace

void Convert(const std::string& in, const std::string& out) {
    VokWorld world;
    LoadDocument(world, in);
    OutputFile file(out);
    try {
        if (OutputFile::IsKept(out)) MoveDocument(world, in, out);
        VokDocumentFile document(file.GetStream());
        world.Write(document);
        document.WriteRaw("\n");
        file.Finish();
        CheckWritten(world, file, out);
    } catch (const DocumentFailure&) {
        throw;
    } catch (const std::exception& failure) {
        const auto* fromObject = dynamic_cast<const VokException*>(&failure);
        const std::string object =
            fromObject != nullptr ? fromObject->GetCauseObject() : std::string();
        throw DocumentFailure({in, 0, 0, object}, failure.what());
    }
    file.Publish();
}
