#include "FileNames/SlashText.h"

#include <QelTools/AsciiText.h>

#include <algorithm>

namespace {

std::string Normalise(std::string text, char from, char to) {
    std::replace(text.begin(), text.end(), from, to);
    const auto end =
        std::unique(text.begin(), text.end(), [to](char a, char b) { return a == to && b == to; });
    text.erase(end, text.end());
    return text;
}

}  // namespace

std::string SlashText::Fold(const std::string& text) {
    return kFoldFilenames ? QelTools::Common::ToLowerAscii(text) : text;
}

std::string SlashText::NormaliseToSlashes(std::string text) {
    return Normalise(std::move(text), '\\', '/');
}

std::string SlashText::NormaliseToBackslashes(std::string text) {
    return Normalise(std::move(text), '/', '\\');
}
