#pragma once

#include "Document/ParserEvents.h"

#include <VokLib/Base/VokTypeId.h>

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

class VokObj;
class VokParse;
class VokWorld;
struct VokDocumentVersion;
struct VokParseFailure;

/// The stack of objects that the events of the parser drive: each start tag, text and end tag goes
/// to the object on top.
class VokParseCallbacks : public ParserEvents {
  public:
    explicit VokParseCallbacks(VokParse& reader) : parse(reader) {}

    void SetWorld(VokWorld* target) { world = target; }
    /// Forgets the objects and names of a document.
    void Clear();
    /// Set by VokParse::Skip; the element's end takes it back.
    void SetSkipping(bool skip) { skipping = skip; }
    /// The object that receives the events; null for none.
    const VokObj* GetReceiver() const { return stack.empty() ? nullptr : stack.back(); }
    static const VokParseFailure& FailureOf(const VokParse& reader);
    static const VokDocumentVersion& VersionOf(const VokParse& reader);

    void StartElement(const char* name, const char** attributes) override;
    void EndElement(const char* name) override;
    void Characters(const char* bytes, std::size_t length) override;

  private:
    void SetTag(const char* name);
    void SetAttributes(const char** attributes);

    struct KnownName {
        std::string_view text;
        VokTypeId id = 0;
        bool isAscii = true;
    };
    static constexpr int kNameBits = 8;

    const KnownName& Know(const char* name);

    VokParse& parse;
    VokWorld* world = nullptr;
    bool skipping = false;
    std::vector<VokObj*> stack;
    std::vector<bool> pushed;  // for each open element: did it push an object?
    std::string values;        // of the last start tag's attributes, each with its NUL
    std::array<KnownName, std::size_t{1} << kNameBits> knownNames;
};

/// Counts the elements of a skipped one. The end of the skipped element itself is the last event
/// that comes here.
class SkipEvents : public ParserEvents {
  public:
    explicit SkipEvents(VokParse& reader) : parse(reader) {}

    void Begin() { depth = 0; }
    void StartElement(const char* name, const char** attributes) override;
    void EndElement(const char* name) override;
    void Characters(const char* bytes, std::size_t length) override;

  private:
    VokParse& parse;
    int depth = 0;
};
