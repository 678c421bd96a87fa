#include <VokLib/Document/VokParse.h>

#include "Document/BlockStreamBuffer.h"
#include "Document/ParseMachine.h"
#include "Document/UnresolvedLinks.h"
#include "Document/UpdateBuffer.h"
#include "Document/VersionSniffer.h"

#include <Platform/Paths.h>
#include <QelTools/Exception.h>
#include <VokLib/Document/VokFilenameTranslator.h>
#include <VokLib/Document/VokUpdate.h>
#include <VokLib/Links/VokPath.h>
#include <VokLib/Text/VokPathText.h>
#include <VokLib/Tree/ThrowVokException.h>
#include <VokLib/Tree/VokDependencies.h>
#include <VokLib/Tree/VokFactory.h>
#include <VokLib/Tree/VokWorld.h>

#include <libxml/parser.h>

#include <optional>
#include <ostream>

namespace {

/// Complete names need no folder that they start from; of the others the true fault is told.
std::string MakeAbsoluteWithoutFolder(const std::string& filename) {
    if (!Platform::BackslashSeparates() && filename.starts_with('/'))
        return VokPathText::TidyAbsolutePath(filename, "/");
    try {
        return VokPathText::TidyAbsolutePath(filename, "");
    } catch (const QelTools::Common::Exception&) {
        QelTools::Common::ThrowException("Failed to retrieve current working directory");
    }
}

std::string MakeAbsolute(const std::string& filename) {
    std::optional<std::string> base = Platform::CurrentDirectory();
    if (!base) return MakeAbsoluteWithoutFolder(filename);
    if (!base->ends_with('\\') && !base->ends_with('/')) *base += '\\';
    return VokPathText::TidyAbsolutePath(filename, *base);
}

std::string PathOf(const VokObj* object) {
    try {
        return VokPath(object).GetText();
    } catch (...) {
        return {};  // the world itself, or nothing in hand
    }
}

/// File names in a loaded tree are in the primary form.
void TakePrimaryForm(VokWorld& world) {
    const std::string form = world.GetFilenameForm();
    if (form == GetFormString(GetPrimaryTranslator())) return;
    VokUpdateDependencesUsingTranslators update(form);
    RewriteDependencies(world, update);
}

}  // namespace

void VokParse::Machine::NoteFailure() {
    failure.object = PathOf(callbacks.GetReceiver());
    NotePlace(parser->GetPlace());
}

void VokParse::Machine::NotePlace(TextPlace place) {
    if (updateState == UpdateState::Updated) return;
    failure.line = place.line;
    failure.column = place.column;
}

void VokParse::Machine::ForgetResults() {
    failure = {};
    documentVersion = {};
}

const VokParseFailure& VokParseCallbacks::FailureOf(const VokParse& reader) {
    return reader.machine->failure;
}

const VokDocumentVersion& VokParseCallbacks::VersionOf(const VokParse& reader) {
    return reader.machine->documentVersion;
}

const VokParseFailure& GetParseFailure(const VokParse& reader) {
    return VokParseCallbacks::FailureOf(reader);
}

VokParse::VokParse() : machine(std::make_unique<Machine>(*this)) {
    xmlSubstituteEntitiesDefault(1);
}

VokParse::~VokParse() = default;

void VokParse::SetAllowUpdate(bool allow) {
    machine->allowUpdate = allow;
}

void VokParse::ParseBuffer(VokWorld& world, const char* bytes, std::size_t size,
                           std::uint32_t stage, const char* filename) {
    if ((stage & kFirstBlock) != 0) machine->ForgetResults();
    if ((stage & ~(kFirstBlock | kLastBlock)) != 0)
        QelTools::Common::ThrowException("Invalid buffer stage parameter.");
    CheckFactories();
    machine->documentName = filename != nullptr ? filename : "";
    const bool last = (stage & kLastBlock) != 0;
    try {
        if ((stage & kFirstBlock) != 0) {
            BeginDocument(world, bytes, size, filename);
            CheckVersion();
        }
        if (machine->version.empty())
            QelTools::Common::ThrowException(
                "Failed to extract version information from .qeli file.");
        FeedBlock(bytes, size, last);
        if (!last) return;
        const bool isCurrent = machine->updateState == Machine::UpdateState::Current;
        ResolveDocumentLinks(*machine->world, isCurrent ? std::string() : machine->version,
                             machine->failure);
        TakePrimaryForm(*machine->world);
    } catch (const VokTextFault& fault) {
        // More exact than what the parser has reached, where a limit was met.
        machine->NotePlace(fault.GetPlace());
        Reset();
        throw;
    } catch (...) {
        Reset();
        throw;
    }
    Reset();
}

void VokParse::CheckFactories() {
    if (VokFactory::FactoryCount() != 0) return;
    ThrowVokException(
        "Attempt to parse without registering any factories. Tools must initialise VokLib before "
        "parsing.");
}

void VokParse::BeginDocument(VokWorld& world, const char* bytes, std::size_t size,
                             const char* filename) {
    Reset();
    machine->version = SniffVersion(bytes, size, machine->documentName);
    machine->documentVersion.name = machine->version;
    BuildParser();
    machine->world = &world;
    machine->callbacks.SetWorld(&world);
    if (filename != nullptr) world.SetFilename(MakeAbsolute(filename));
}

void VokParse::CheckVersion() {
    if (machine->version == QelCurrentNamespace) return;
    machine->updateState = Machine::UpdateState::Compatible;
    machine->documentVersion.use = VokVersionUse::AsItIs;
    if (!machine->allowUpdate) {
        QelTools::Common::ThrowException(
            std::string(
                ".qeli instance is not the correct version. Expected version namespace of \"") +
            QelCurrentNamespace + "\" but got \"" + machine->version + "\".");
    }
    if (VokUpdate::Get().IsCompatible(machine->version)) return;
    machine->updateState = Machine::UpdateState::Outdated;
    machine->documentVersion.use = VokVersionUse::Updated;
}

void VokParse::FeedBlock(const char* bytes, std::size_t size, bool last) {
    if (machine->updateState != Machine::UpdateState::Outdated) {
        FeedParser(bytes, size, last);
        return;
    }
    machine->updateBuffer.insert(machine->updateBuffer.end(), bytes, bytes + size);
    if (!last) return;

    CBlockStreamBuffer blocks;
    std::ostream out(&blocks);
    // A lack of memory comes out as such.
    out.exceptions(std::ios_base::badbit);
    CUpdateBuffer input(machine->updateBuffer);
    VokUpdate::Get().Update(out, input, machine->version);
    machine->updateState = Machine::UpdateState::Updated;
    BuildParser();
    if (blocks.GetBlockCount() == 0) FeedParser(bytes, size, last);
    for (; blocks.GetBlockCount() != 0; blocks.PopFront()) {
        const CBlockStreamBuffer::Block& block = blocks.GetBlock(0);
        FeedParser(block.data, block.used, blocks.GetBlockCount() == 1);
    }
}

void VokParse::FeedParser(const char* bytes, std::size_t size, bool last) {
    machine->bytesRead += size;
    SetDocumentBytes(machine->bytesRead);
    int code = 0;
    try {
        code = machine->feed->Feed(bytes, size, last);
    } catch (...) {
        machine->NoteFailure();
        throw;
    }
    if (code == 0) return;
    machine->NoteFailure();
    ThrowTextFault(
        "Libxml2 parse error: " + std::to_string(code) + " in \"" + machine->documentName + "\"",
        machine->parser->GetPlace());
}

void VokParse::BuildParser() {
    machine->feed.reset();
    machine->parser = std::make_unique<PushParser>(machine->callbacks, machine->documentName, true);
    machine->feed = std::make_unique<DocumentFeed>(*machine->parser);
    machine->bytesRead = 0;
}

void VokParse::Reset() {
    Machine& state = *machine;
    state.callbacks.Clear();
    state.feed.reset();
    state.parser.reset();
    state.world = nullptr;
    state.version.clear();
    state.updateState = Machine::UpdateState::Current;
    std::vector<char>().swap(state.updateBuffer);
    tag = {};
    tagId = 0;
    attributes.Clear();
    newObject = nullptr;
    ClearText();
    ResetPadding();
}

void VokParse::PushNewObject(VokObj* object) {
    if (newObject != nullptr)
        ThrowVokException("Attempt to push two new objects when reading start tag.");
    newObject = object;
}

void VokParse::Skip() {
    if (machine->parser == nullptr) QelTools::Common::ThrowException("No parser");
    machine->skip.Begin();
    machine->callbacks.SetSkipping(true);
    machine->parser->SetEvents(machine->skip);
}

void VokParse::EndSkip() {
    if (machine->parser == nullptr) QelTools::Common::ThrowException("No parser");
    machine->callbacks.SetSkipping(false);
    machine->parser->SetEvents(machine->callbacks);
}
