#include "Document/ParseCallbacks.h"

#include "Document/DocumentEncoding.h"
#include "Document/ParseMachine.h"

#include <VokLib/Document/VokParse.h>
#include <VokLib/Text/VokEncoding.h>
#include <VokLib/Tree/VokObj.h>
#include <VokLib/Tree/VokWorld.h>

#include <cstdint>
#include <cstring>

void VokParseCallbacks::Clear() {
    world = nullptr;
    skipping = false;
    stack.clear();
    pushed.clear();
    knownNames.fill({});
}

void VokParseCallbacks::StartElement(const char* name, const char** attributes) {
    // Only the text behind the last child reaches ParseData.
    parse.ClearText();
    SetAttributes(attributes);
    bool isPushed = false;
    if (!stack.empty()) {
        SetTag(name);
        parse.newObject = nullptr;
        stack.back()->ParseStartTag(parse);
        if (parse.newObject != nullptr) {
            stack.push_back(parse.newObject);
            isPushed = true;
        }
    } else if (std::strcmp(name, "QEL") == 0) {
        stack.push_back(world);
        world->ParseAttributes(parse);
        isPushed = true;
    } else {
        parse.Skip();
    }
    // The end of a skipped element does not come here.
    if (!skipping) pushed.push_back(isPushed);
}

void VokParseCallbacks::EndElement(const char* name) {
    parse.RewindText();
    if (!stack.empty()) {
        // The tag is still that of the last start.
        stack.back()->ParseData(parse);
        parse.ClearText();
    }
    if (!stack.empty()) {
        SetTag(name);
        stack.back()->ParseEndTag(parse);
        if (!pushed.empty() && pushed.back()) stack.pop_back();
    }
    if (!pushed.empty()) pushed.pop_back();
}

void VokParseCallbacks::Characters(const char* bytes, std::size_t length) {
    parse.AppendText(bytes, length);
}

/// The parser keeps one copy of each name for as long as it lives, so that an address tells the
/// name.
const VokParseCallbacks::KnownName& VokParseCallbacks::Know(const char* name) {
    const auto address = static_cast<std::uint64_t>(reinterpret_cast<std::uintptr_t>(name));
    constexpr std::uint64_t kGoldenRatio = 0x9E3779B97F4A7C15u;
    KnownName& known = knownNames[(address * kGoldenRatio) >> (64 - kNameBits)];
    if (known.text.data() != name) {
        known.text = name;
        known.id = MakeTypeId(known.text);
        known.isAscii = IsAscii(name, known.text.size());
    }
    return known;
}

void VokParseCallbacks::SetTag(const char* name) {
    const KnownName& known = Know(name);
    parse.tag = known.text;
    parse.tagId = known.id;
}

/// Values are kept to the next start tag; names live as long as the parser.
void VokParseCallbacks::SetAttributes(const char** attributes) {
    parse.attributes.Clear();
    if (attributes == nullptr) return;
    std::size_t total = 0;
    for (const char** pair = attributes; pair[0] != nullptr; pair += 2)
        total += std::strlen(pair[1]) + 1;
    if (values.size() < total) values.resize(total);

    char* to = values.data();
    for (; attributes[0] != nullptr; attributes += 2) {
        const char* const name = attributes[0];
        const std::size_t length = std::strlen(attributes[1]);
        if (!Know(name).isAscii || !IsAscii(attributes[1], length)) {
            parse.attributes.Add(VokEncoding::ToLatin1(name),
                                 VokEncoding::ToLatin1({attributes[1], length}));
            continue;
        }
        std::memcpy(to, attributes[1], length + 1);
        parse.attributes.AddView(name, to);
        to += length + 1;
    }
}

void SkipEvents::StartElement(const char*, const char**) {
    ++depth;
}

void SkipEvents::EndElement(const char*) {
    if (--depth >= 0) return;
    parse.EndSkip();
}

void SkipEvents::Characters(const char*, std::size_t) {}
