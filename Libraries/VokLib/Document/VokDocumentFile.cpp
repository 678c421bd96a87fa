#include <VokLib/VokDocumentFile.h>

#include <VokLib/VokNumberText.h>

void VokDocumentFile::WriteFloat(float value) {
    char text[VokNumberText::kMaxFloatText];
    WriteNumberText({text, VokNumberText::FormatFloatTo(value, text)});
}
