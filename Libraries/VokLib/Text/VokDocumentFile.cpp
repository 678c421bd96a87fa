#include <VokLib/Text/VokDocumentFile.h>

#include <VokLib/Text/VokNumberText.h>

void VokDocumentFile::WriteFloat(float value) {
    char text[VokNumberText::kMaxFloatText];
    WriteNumberText({text, VokNumberText::FormatFloatTo(value, text)});
}
