#include "Library/ElementFactories.h"

#include <VokLib/Document/VokParse.h>
#include <VokLib/Tree/VokWorld.h>

#include <gtest/gtest.h>
#include <libxml/parser.h>
#include <libxml/tree.h>

#include <fstream>
#include <map>
#include <memory>
#include <set>
#include <sstream>
#include <string>

#include "VokLib/SceneTestTools.h"

// docs/document-format.md, the tables of the code and two documents that hold one of everything
// must say the same.

namespace {

using Words = std::set<std::string>;

/// What the page says of one element: its rows' codes, such as "<offset>/<rotEul>@rotOrd", and the
/// sections that it continues.
struct Section {
    Words rows;
    std::vector<std::string> bases;
};

using Page = std::map<std::string, Section>;

/// The texts between backticks.
std::vector<std::string> CodesIn(const std::string& line) {
    std::vector<std::string> codes;
    std::size_t begin = 0;
    while ((begin = line.find('`', begin)) != std::string::npos) {
        const std::size_t end = line.find('`', begin + 1);
        if (end == std::string::npos) break;
        codes.push_back(line.substr(begin + 1, end - begin - 1));
        begin = end + 1;
    }
    return codes;
}

Page ReadPage() {
    std::ifstream file(std::string(RIGBAKE_SOURCE_ROOT) + "/docs/document-format.md");
    Page page;
    Section* section = nullptr;
    std::string line;
    while (std::getline(file, line)) {
        if (line.starts_with("### `")) {
            const std::vector<std::string> codes = CodesIn(line);
            section = &page[codes.front()];
            section->bases.assign(codes.begin() + 1, codes.end());
        } else if (line.starts_with("#")) {
            section = nullptr;
        } else if (section != nullptr && line.starts_with("| `")) {
            EXPECT_TRUE(section->rows.insert(CodesIn(line).front()).second) << line;
        }
    }
    return page;
}

Words WithBases(const Page& page, const std::string& name) {
    const Section& section = page.at(name);
    Words rows = section.rows;
    for (const std::string& base : section.bases) rows.merge(WithBases(page, base));
    return rows;
}

/// Each element that a row names, the outer ones of a nested row too: "<a>/<b>@c" has a and b.
Words ElementPaths(const Words& rows) {
    Words paths;
    for (const std::string& row : rows) {
        std::string path = row.substr(0, row.find('@'));
        while (!path.empty()) {
            paths.insert(path);
            const std::size_t slash = path.rfind('/');
            path = slash == std::string::npos ? "" : path.substr(0, slash);
        }
    }
    return paths;
}

Words ObjectElements() {
    Words names = {"QEL", "blindData"};  // read and written as objects, made by their owners alone
    for (const ElementVocabulary& element : DescribeElements())
        names.insert(std::string(element.element));
    return names;
}

/// What a document shows of each object element, in the page's form.
class Observer {
  public:
    void Read(const std::string& name) {
        const std::string path = std::string(RIGBAKE_SOURCE_ROOT) + "/Tests/Documents/" + name;
        const std::unique_ptr<xmlDoc, void (*)(xmlDoc*)> document(
            xmlReadFile(path.c_str(), nullptr, 0), xmlFreeDoc);
        ASSERT_NE(document, nullptr);
        Visit(xmlDocGetRootElement(document.get()));
    }

    const std::map<std::string, Words>& Shown() const { return shown; }

  private:
    static std::string NameOf(const xmlNode* node) {
        return reinterpret_cast<const char*>(node->name);
    }

    void Visit(const xmlNode* node) {
        Words& rows = shown[NameOf(node)];
        for (const xmlNs* ns = node->nsDef; ns != nullptr; ns = ns->next)
            if (ns->prefix == nullptr) rows.insert("@xmlns");
        Describe(node, "", rows);
    }

    void Describe(const xmlNode* node, const std::string& path, Words& rows) {
        for (const xmlAttr* attribute = node->properties; attribute; attribute = attribute->next)
            rows.insert(path + "@" + reinterpret_cast<const char*>(attribute->name));
        for (const xmlNode* child = node->children; child != nullptr; child = child->next) {
            if (child->type == XML_TEXT_NODE && !path.empty() && !xmlIsBlankNode(child))
                rows.insert(path);
            if (child->type != XML_ELEMENT_NODE) continue;
            const std::string name = NameOf(child);
            if (objects.count(name) != 0) {
                Visit(child);
                continue;
            }
            const std::string inner = (path.empty() ? "" : path + "/") + "<" + name + ">";
            if (path.empty()) rows.insert(inner);
            if (name != "customData") Describe(child, inner, rows);
        }
    }

    const Words objects = ObjectElements();
    std::map<std::string, Words> shown;
};

std::string Joined(const Words& words) {
    std::string text;
    for (const std::string& word : words) text += word + " ";
    return text;
}

Words Missing(const Words& wanted, const Words& given) {
    Words missing;
    for (const std::string& word : wanted)
        if (given.count(word) == 0) missing.insert(word);
    return missing;
}

TEST(FormatPage, HasASectionForEachElementType) {
    const Page page = ReadPage();
    for (const std::string& name : ObjectElements())
        EXPECT_EQ(page.count(name), 1u) << name << " has no section";
    const Words objects = ObjectElements();
    const Words others = {"object", "constraint", "aimFields"};
    for (const auto& [name, section] : page)
        EXPECT_TRUE(objects.count(name) + others.count(name) == 1) << name << " is no element";
}

TEST(FormatPage, NamesTheChildElementsOfTheTables) {
    const Page page = ReadPage();
    const Words misplaced = {"<vertexArray>/<sizes>", "<vertexArray>/<indices>"};  // refused there
    const Words held = {"<vertexArray>/<blindData>"};  // a section of its own
    for (const ElementVocabulary& element : DescribeElements()) {
        const Words paths = ElementPaths(WithBases(page, std::string(element.element)));
        for (const ElementVocabulary::Child& child : element.children) {
            const std::string name = "<" + std::string(child.name) + ">";
            const std::string within =
                child.within.empty() ? name : "<" + std::string(child.within) + ">/" + name;
            bool isThere = false;
            for (const std::string& path : paths)
                isThere = isThere || path == within || path.ends_with("/" + within);
            // What stands in the wrong place is a row that refuses it.
            for (const std::string& path : paths)
                isThere = isThere || (child.within.empty() && path.ends_with("/" + name));
            EXPECT_TRUE(isThere || misplaced.count(within) + held.count(within) != 0)
                << element.element << ": the page has no " << within;
        }
    }
}

TEST(FormatPage, NamesWhatTheDocumentsShowAndNothingElse) {
    const Page page = ReadPage();
    Observer observer;
    observer.Read("vocabulary.qeli");
    observer.Read("vocabulary-rare.qeli");
    std::map<std::string, Words> shownOfSection;
    for (const auto& [element, shown] : observer.Shown()) {
        const Words rows = WithBases(page, element);
        const Words paths = ElementPaths(rows);
        Words unknown;
        for (const std::string& row : shown)
            if (rows.count(row) == 0 && paths.count(row) == 0) unknown.insert(row);
        unknown.erase("@schemaLocation");
        EXPECT_TRUE(unknown.empty()) << element << ": the page lacks " << Joined(unknown);
        // What an element shows counts for the sections that it continues.
        std::vector<std::string> open = {element};
        while (!open.empty()) {
            const std::string name = open.back();
            open.pop_back();
            shownOfSection[name].insert(shown.begin(), shown.end());
            const std::vector<std::string>& bases = page.at(name).bases;
            open.insert(open.end(), bases.begin(), bases.end());
        }
    }
    for (const auto& [name, section] : page)
        EXPECT_EQ(Joined(Missing(section.rows, shownOfSection[name])), "")
            << name << ": the page says more than a document shows";
}

TEST(FormatPage, TheDocumentOfRareThingsLoads) {
    const VokLib library(true, true, true, true, true);
    VokWorld world;
    VokParse().ParseFile(
        world, std::string(RIGBAKE_SOURCE_ROOT) + "/Tests/Documents/vocabulary-rare.qeli");
    EXPECT_EQ(world.GetChildCount(), 5u);
}

}  // namespace
