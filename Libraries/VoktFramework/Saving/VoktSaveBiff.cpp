#include <Platform/FileTests.h>
#include <QelTools/Exception.h>
#include <VoktFramework/Atoms/VoktAtomBiff.h>
#include <VoktFramework/Atoms/VoktUniverse.h>
#include <VoktFramework/CommandLine/VoktCommandLineSyntax.h>
#include <VoktFramework/Errors/VoktError.h>
#include <VoktFramework/Saving/VoktMakeWriteableHandler.h>
#include <VoktFramework/Saving/VoktOutputPath.h>
#include <VoktFramework/Saving/VoktSaveBiff.h>

#include <string_view>

namespace {

constexpr std::string_view kOpenFailed = "Failed to open file for Biff write.";
constexpr const char* kOut = "-out";

void MakeWriteable(const std::string& path) {
    if (Platform::GrantsWrite(path)) return;
    // The default handler has no owner: it serves every later file of the process.
    if (!VoktMakeWriteableHandler::Exists()) new VoktMakeWriteableHandler;
    // NOLINTNEXTLINE(clang-analyzer-cplusplus.NewDeleteLeaks)
    VoktMakeWriteableHandler::Get().MakeWriteable(path);
}

}  // namespace

VoktSaveBiff::VoktSaveBiff(std::uint32_t hide) : VoktSaveBiffBase(hide) {}

VoktSaveBiff::~VoktSaveBiff() noexcept(false) = default;

void VoktSaveBiff::AddFlags(VoktCommandLineSyntax& syntax) {
    if (hideFlags == 1) return;
    syntax.AddFlag(kOut, "-o", "Output binary file", VoktCommandLineSyntax::kRequired);
    syntax.AddFlagArgument(VoktArgumentType::OutputFilename);
    VoktSaveBiffBase::AddFlags(syntax);
}

void VoktSaveBiff::ReadFlags(const VoktCommandLineSyntax& syntax) {
    ReadValueFlags(syntax, {kOut});
    VoktSaveBiffBase::ReadFlags(syntax);
}

void VoktSaveBiff::SetFlag(const std::string& name, const std::string& value) {
    if (name == kOut) {
        outputFilename = value;
    } else {
        VoktSaveBiffBase::SetFlag(name, value);
    }
}

void VoktSaveBiff::Validate() {
    std::string faults;
    if (outputFilename.empty()) {
        faults += "No output filename provided.\n";
    } else if (!forceWrite && !Platform::IsWritable(OutputSystemPath(outputFilename))) {
        faults += "Output file \"" + outputFilename + "\" is not writeable.\n";
    }
    if (!faults.empty()) QelTools::Common::ThrowException(faults);
    VoktSaveBiffBase::Validate();
}

std::vector<std::string> VoktSaveBiff::GetOutputFiles() const {
    if (endian != kBothEndian) return {outputFilename};
    return {outputFilename + littleSuffix, outputFilename + bigSuffix};
}

void VoktSaveBiff::Process(VoktUniverse& universe) {
    VoktAtomBiff* atom = biffName.empty() ? universe.FetchByType<VoktAtomBiff>()
                                          : universe.FetchByTypeAndName<VoktAtomBiff>(biffName);
    if (atom == nullptr) QelTools::Common::ThrowException("VoktSaveBiff unable to find a Biff");
    switch (endian) {
        case kLittleEndian:
            Save(outputFilename, *atom, false, universe);
            break;
        case kBigEndian:
            Save(outputFilename, *atom, true, universe);
            break;
        case kBothEndian: {
            const std::vector<std::string> files = GetOutputFiles();
            Save(files[0], *atom, false, universe);
            Save(files[1], *atom, true, universe);
            break;
        }
        default:
            QelTools::Common::ThrowInternalError();
    }
}

void VoktSaveBiff::Save(const std::string& filename, VoktAtomBiff& atom, bool bigEndian,
                        const VoktUniverse& universe) const {
    const std::string path = MakeOutputPath(filename, universe);
    if (forceWrite) MakeWriteable(path);
    try {
        atom.block.WriteToPath(path, bigEndian ? 1 : 0);
    } catch (const std::exception& failure) {
        if (failure.what() != kOpenFailed) throw;
        throw VoktError(VoktErrorId::CannotOpenForWrite, std::string(kOpenFailed));
    }
}
