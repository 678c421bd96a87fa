#include "LoadDocument.h"

#include "FailureText.h"

#include <Platform/ErrorText.h>
#include <Platform/Folders.h>
#include <Platform/OpenForReading.h>
#include <VokLib/Base/VokException.h>
#include <VokLib/Document/VokParse.h>
#include <VokLib/Document/VokParseFailure.h>
#include <VokLib/Document/VokUpdateFailure.h>
#include <VokLib/Tree/VokWorld.h>

#include <cerrno>
#include <cstdio>
#include <string_view>

namespace {

/// The parser's number for an entity that it does not know.
constexpr const char* kUndeclaredEntity = "Libxml2 parse error: 26 ";
constexpr const char* kEntitiesAreNotRead =
    ": an entity that is not one of XML's own five; entities that a document declares itself are "
    "not read";

/// The system's reason why a file does not open; the reader itself tells none.
std::string OpenFailureReason(const std::string& path) {
    if (Platform::IsFolder(path)) return ": " + Platform::ErrorText(EISDIR);
    if (Platform::OpenForReading(path) == nullptr) return ": " + Platform::ErrorText(errno);
    return {};
}

std::string LinkLines(const VokParseFailure& failure) {
    std::string lines;
    for (const std::string& link : failure.unresolvedLinks) lines += "\n    " + ReadableText(link);
    const std::size_t others = failure.unresolvedCount - failure.unresolvedLinks.size();
    if (others > 0) lines += "\n    and " + std::to_string(others) + " more";
    return lines;
}

/// The last thing that a stylesheet said: why it gave up.
std::string ReasonLine(std::string_view messages) {
    while (messages.ends_with('\n')) messages.remove_suffix(1);
    if (messages.empty()) return {};
    return "\n    " + ReadableText(std::string(messages.substr(messages.rfind('\n') + 1)));
}

void ReplaceAll(std::string& text, const std::string& from, const std::string& to) {
    for (std::size_t at = text.find(from); at != std::string::npos;
         at = text.find(from, at + to.size()))
        text.replace(at, from.size(), to);
}

}  // namespace

LoadedDocument LoadDocument(VokWorld& world, const std::string& path,
                            const std::string& shownPath) {
    VokParse reader;
    reader.SetAllowUpdate(true);
    try {
        reader.ParseFile(world, path);
        return {GetDocumentVersion(reader), reader.GetDocumentBytes()};
    } catch (const std::exception& failure) {
        const VokParseFailure& stop = GetParseFailure(reader);
        FailurePlace place{shownPath, stop.line, stop.column, stop.object};
        const auto* fromObject = dynamic_cast<const VokException*>(&failure);
        if (fromObject != nullptr && !fromObject->GetCauseObject().empty())
            place.object = fromObject->GetCauseObject();

        std::string words = WordsOf(failure);
        if (const auto* update = dynamic_cast<const VokUpdateFailure*>(&failure))
            words += ReasonLine(update->GetMessages());
        if (words.starts_with(kUndeclaredEntity)) words += kEntitiesAreNotRead;
        if (words.starts_with("File open error: ")) words += OpenFailureReason(path);
        if (path != shownPath) ReplaceAll(words, path, shownPath);
        throw DocumentFailure(place, words + LinkLines(stop));
    }
}
