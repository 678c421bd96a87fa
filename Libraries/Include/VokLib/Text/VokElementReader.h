#pragma once

#include <VokLib/Base/VokTypeId.h>
#include <VokLib/Text/VokAttributes.h>
#include <VokLib/Text/VokTextReader.h>

#include <string_view>

/// The element in hand while a document is read: its tag, its attributes and its text. It knows
/// nothing of objects, so that what merely reads values needs no more than this.
class VokElementReader : public VokTextReader {
  public:
    /// In ParseData this is still the last started element.
    std::string_view GetTag() const { return tag; }
    /// MakeTypeId of the tag, so that tables of names compare a number first.
    VokTypeId GetTagId() const { return tagId; }
    /// The attributes of the last start tag; they stay valid until the next one, its own end
    /// included.
    const VokAttributes& GetAttributes() const { return attributes; }
    /// False when the user of the document never looks at contents (VokBulk): their text is
    /// checked as ever and nothing of it is to be kept.
    bool KeepsContents() const { return keepsContents; }

  protected:
    std::string_view tag;
    VokTypeId tagId = 0;
    VokAttributes attributes;
    bool keepsContents = true;
};
