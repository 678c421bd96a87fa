#include <VokLib/Text/VokNumberText.h>
#include <VokLib/Text/VokTextReader.h>

#include "Text/WordCount.h"

#include <cstring>
#include <utility>

void VokTextReader::CountText() {
    wordCount = std::make_unique<VokNumberText::WordCount>();
    isSpecial = true;
}

void VokTextReader::StreamText(std::unique_ptr<VokTextStream> receiver) {
    stream = std::move(receiver);
    isSpecial = true;
}

void VokTextReader::ForgetSpecialText() {
    isSpecial = false;
    wordCount.reset();
    stream.reset();
}

void VokTextReader::AppendSpecialText(const char* bytes, std::size_t count) {
    if (wordCount != nullptr) {
        wordCount->Add(bytes, count);
        return;
    }
    // The word at the end may go on in the next piece and waits for it.
    std::size_t whole = count;
    while (whole != 0 && !VokNumberText::IsBlank(bytes[whole - 1])) --whole;
    Store(bytes, whole);
    if (whole != 0) {
        RewindText();
        stream->Take(*this);
        length = 0;
        RewindText();
    }
    Store(bytes + whole, count - whole);
}
