#include "Document/ParseCallbacks.h"

#include "Document/ParseMachine.h"

#include <VokLib/VokEncoding.h>
#include <VokLib/VokObj.h>
#include <VokLib/VokParse.h>
#include <VokLib/VokWorld.h>

#include <cstdint>
#include <cstring>

void VokParseCallbacks::Clear() {
    world = nullptr;
    skipping = false;
    stack.clear();
    pushed.clear();
    knownTags.fill({});
}

void VokParseCallbacks::StartElement(const char* name, const char** attributes) {
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
    // Only the text behind the last child reaches ParseData.
    parse.ClearText();
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

/// The parser keeps one copy of each name, so that its address tells the name.
void VokParseCallbacks::SetTag(const char* name) {
    const auto address = reinterpret_cast<std::uintptr_t>(name);
    KnownTag& known = knownTags[(address ^ (address >> 6)) % knownTags.size()];
    if (known.name != name) known = {name, std::strlen(name), MakeTypeId(name)};
    parse.tag = {name, known.length};
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
        const std::string_view name = attributes[0];
        const std::string_view value = attributes[1];
        if (VokEncoding::HasHighBytes(name) || VokEncoding::HasHighBytes(value)) {
            parse.attributes.Add(VokEncoding::ToLatin1(name), VokEncoding::ToLatin1(value));
            continue;
        }
        std::memcpy(to, value.data(), value.size() + 1);
        parse.attributes.AddView(attributes[0], to);
        to += value.size() + 1;
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
