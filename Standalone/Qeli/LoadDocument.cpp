#include "LoadDocument.h"

#include "FailureText.h"

#include <Platform/ErrorText.h>
#include <Platform/Folders.h>
#include <VokLib/Base/VokException.h>
#include <VokLib/Document/VokParse.h>
#include <VokLib/Document/VokParseFailure.h>
#include <VokLib/Tree/VokWorld.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <string_view>

namespace {

constexpr std::size_t kMostLinksShown = 20;

/// The system's reason why a file does not open; the reader itself tells none.
std::string OpenFailureReason(const std::string& path) {
    if (Platform::IsFolder(path)) return ": " + Platform::ErrorText(EISDIR);
    std::FILE* const file = std::fopen(path.c_str(), "rb");
    if (file == nullptr) return ": " + Platform::ErrorText(errno);
    std::fclose(file);
    return {};
}

std::string LinkLines(const VokParseFailure& failure) {
    const std::size_t count = failure.unresolvedLinks.size();
    const std::size_t shown = std::min(count, kMostLinksShown);
    std::string lines;
    for (std::size_t i = 0; i < shown; ++i)
        lines += "\n    " + ReadableText(failure.unresolvedLinks[i]);
    if (count > shown) lines += "\n    and " + std::to_string(count - shown) + " more";
    return lines;
}

/// The number behind the last `word` of a message; 0 without one.
int NumberBehind(std::string_view text, std::string_view word) {
    const std::size_t at = text.rfind(word);
    if (at == std::string_view::npos) return 0;
    int number = 0;
    const std::string rest(text.substr(at + word.size()));
    return std::sscanf(rest.c_str(), "%d", &number) == 1 ? number : 0;
}

/// The parser's own messages end in the place; it is the more exact one where a limit was met.
void TakePlaceFromWords(FailurePlace& place, std::string_view words) {
    const bool isParsers = words.starts_with("Libxml2 parse error: ") ||
                           words.starts_with("Document limit exceeded: ");
    const int line = isParsers ? NumberBehind(words, " Line ") : 0;
    if (line == 0) return;
    place.line = line;
    place.column = NumberBehind(words, " Column ");
}

void ReplaceAll(std::string& text, const std::string& from, const std::string& to) {
    for (std::size_t at = text.find(from); at != std::string::npos;
         at = text.find(from, at + to.size()))
        text.replace(at, from.size(), to);
}

}  // namespace

void LoadDocument(VokWorld& world, const std::string& path, const std::string& shownPath) {
    VokParse reader;
    reader.SetAllowUpdate(true);
    try {
        reader.ParseFile(world, path);
    } catch (const std::exception& failure) {
        const VokParseFailure& stop = GetParseFailure(reader);
        FailurePlace place{shownPath, stop.line, stop.column, stop.object};
        const auto* fromObject = dynamic_cast<const VokException*>(&failure);
        if (fromObject != nullptr && !fromObject->GetCauseObject().empty())
            place.object = fromObject->GetCauseObject();

        std::string words = failure.what();
        TakePlaceFromWords(place, words);
        if (words.starts_with("File open error: ")) words += OpenFailureReason(path);
        if (path != shownPath) ReplaceAll(words, path, shownPath);
        throw DocumentFailure(place, words + LinkLines(stop));
    }
}
