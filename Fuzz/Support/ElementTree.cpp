#include "Support/ElementTree.h"

#include <algorithm>

namespace {

bool IsSpace(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

bool EndsName(char c) {
    return IsSpace(c) || c == '<' || c == '>' || c == '/' || c == '=' || c == '"' || c == '\'';
}

class Reader {
  public:
    explicit Reader(std::string_view markup) : text(markup) {}

    std::optional<ElementDocument> Read() {
        ElementDocument document;
        if (!ReadProlog(document.prolog)) return std::nullopt;
        if (!ReadTree(document.root)) return std::nullopt;
        SkipSpace();
        if (at != text.size()) return std::nullopt;
        return document;
    }

  private:
    bool Starts(std::string_view start) const { return text.substr(at).starts_with(start); }

    void SkipSpace() {
        while (at < text.size() && IsSpace(text[at])) ++at;
    }

    /// Moves behind `end`; false when it does not come.
    bool SkipBehind(std::string_view end) {
        const std::size_t found = text.find(end, at);
        if (found == std::string_view::npos) return false;
        at = found + end.size();
        return true;
    }

    /// A comment, an instruction; false for anything else that begins with these marks.
    bool SkipNoElement() { return SkipBehind(Starts("<!--") ? "-->" : "?>"); }
    bool IsNoElement() const { return Starts("<!--") || Starts("<?"); }

    bool ReadProlog(std::string& prolog) {
        SkipSpace();
        while (IsNoElement()) {
            if (!SkipNoElement()) return false;
            SkipSpace();
        }
        prolog = text.substr(0, at);
        return true;
    }

    bool ReadTree(Element& root) {
        std::vector<Element*> open;
        if (!ReadStartTag(root, open)) return false;
        while (!open.empty()) {
            Element& top = *open.back();
            if (at == text.size()) return false;
            if (text[at] != '<') {
                const std::size_t end = std::min(text.find('<', at), text.size());
                top.text += text.substr(at, end - at);
                at = end;
            } else if (Starts("</")) {
                if (!ReadEndTag(top)) return false;
                open.pop_back();
            } else if (IsNoElement()) {
                if (!SkipNoElement()) return false;
            } else {
                if (Starts("<!") || open.size() >= kMostNesting) return false;
                top.text.clear();
                if (!ReadStartTag(top.children.emplace_back(), open)) return false;
            }
        }
        return true;
    }

    std::string_view ReadName() {
        const std::size_t begin = at;
        while (at < text.size() && !EndsName(text[at])) ++at;
        return text.substr(begin, at - begin);
    }

    bool ReadStartTag(Element& element, std::vector<Element*>& open) {
        if (!Starts("<")) return false;
        ++at;
        element.name = ReadName();
        if (element.name.empty()) return false;
        for (SkipSpace(); at < text.size() && text[at] != '>' && text[at] != '/'; SkipSpace())
            if (!ReadAttribute(element)) return false;
        if (Starts("/>")) {
            at += 2;
            return true;
        }
        if (!Starts(">")) return false;
        ++at;
        open.push_back(&element);
        return true;
    }

    bool ReadAttribute(Element& element) {
        const std::string_view name = ReadName();
        SkipSpace();
        if (name.empty() || !Starts("=")) return false;
        ++at;
        SkipSpace();
        if (!Starts("\"") && !Starts("'")) return false;
        const char quote = text[at++];
        const std::size_t end = text.find(quote, at);
        if (end == std::string_view::npos) return false;
        std::string value(text.substr(at, end - at));
        if (value.find_first_of("<\"") != std::string::npos) return false;
        element.attributes.emplace_back(name, std::move(value));
        at = end + 1;
        return true;
    }

    bool ReadEndTag(Element& element) {
        at += 2;
        if (ReadName() != element.name) return false;
        SkipSpace();
        if (!Starts(">")) return false;
        ++at;
        if (std::all_of(element.text.begin(), element.text.end(), IsSpace)) element.text.clear();
        return true;
    }

    std::string_view text;
    std::size_t at = 0;
};

void Write(const Element& element, std::string& out) {
    out += '<' + element.name;
    for (const auto& [name, value] : element.attributes) out += ' ' + name + "=\"" + value + '"';
    if (element.children.empty() && element.text.empty()) {
        out += "/>";
        return;
    }
    out += '>';
    if (!element.children.empty()) out += '\n';
    for (const Element& child : element.children) {
        Write(child, out);
        out += '\n';
    }
    out += element.text + "</" + element.name + '>';
}

}  // namespace

const std::string* Element::Find(std::string_view attribute) const {
    for (const auto& [attributeName, value] : attributes)
        if (attributeName == attribute) return &value;
    return nullptr;
}

std::string* Element::Find(std::string_view attribute) {
    return const_cast<std::string*>(std::as_const(*this).Find(attribute));
}

std::optional<ElementDocument> ParseElements(std::string_view text) {
    return Reader(text).Read();
}

std::string WriteElements(const ElementDocument& document) {
    std::string text = document.prolog;
    Write(document.root, text);
    return text + '\n';
}

std::size_t CountElements(const Element& element) {
    std::size_t count = 1;
    for (const Element& child : element.children) count += CountElements(child);
    return count;
}
