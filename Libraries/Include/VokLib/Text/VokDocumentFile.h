#pragma once

#include <VokLib/Text/VokFile.h>

/// The writer of documents: floats stand as VokNumberText::FormatFloat writes them, as they do in
/// attributes. The stream is the caller's: opened before (in binary mode, so that line ends stay
/// single bytes), looked at for errors and closed after the last write.
class VokDocumentFile : public VokFile {
  public:
    using VokFile::VokFile;

    void WriteFloat(float value) override;
};
