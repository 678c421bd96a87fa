#include <QelTools/AsciiText.h>

#include <algorithm>

namespace QelTools::Common {

std::string ToLowerAscii(std::string_view text) {
    std::string lower(text);
    for (char& c : lower) c = ToLowerAscii(c);
    return lower;
}

bool EqualsIgnoringCase(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char x, char y) { return ToLowerAscii(x) == ToLowerAscii(y); });
}

}  // namespace QelTools::Common
