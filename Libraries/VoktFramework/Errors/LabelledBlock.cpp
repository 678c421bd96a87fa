#include "Errors/LabelledBlock.h"

#include <ostream>

namespace {

std::string WithLineFeedsOnly(const std::string& text) {
    std::string result;
    result.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '\r') {
            result += text[i];
            continue;
        }
        result += '\n';
        if (i + 1 < text.size() && text[i + 1] == '\n') ++i;
    }
    return result;
}

}  // namespace

void PrintLabelledBlock(std::ostream& stream, int level, const std::string& label,
                        const std::string& value) {
    const std::string lines = WithLineFeedsOnly(value);
    const std::string indent(static_cast<std::size_t>(level) * 4, ' ');
    const std::string continuation(indent.size() + label.size() + 2, ' ');

    std::size_t begin = 0;
    std::size_t end = lines.find('\n');
    stream << indent << label << ": " << lines.substr(0, end) << std::endl;
    while (end != std::string::npos) {
        begin = end + 1;
        end = lines.find('\n', begin);
        stream << continuation << lines.substr(begin, end - begin) << std::endl;
    }
}
