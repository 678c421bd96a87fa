#include "Update/RenamingSheet.h"

#include "Update/XmlHandles.h"

#include <new>
#include <string_view>

namespace {

constexpr const char* kMarkNamespace = "http://qel.example/ns/qeli/update";
constexpr const char* kInstanceNamespace = "http://www.w3.org/2001/XMLSchema-instance";

std::string AttributeOf(const xmlNode& element, const char* name) {
    for (const xmlAttr* attribute = element.properties; attribute != nullptr;
         attribute = attribute->next)
        if (FromXml(attribute->name) == name && attribute->children != nullptr)
            return std::string(FromXml(attribute->children->content));
    return {};
}

bool IsSchemaLocation(const xmlAttr& attribute) {
    return FromXml(attribute.name) == "schemaLocation";
}

/// The root's only one, in its namespace.
bool HasOwnSchemaLocation(const xmlNode& root) {
    const xmlAttr* const first = root.properties;
    if (first == nullptr || !IsSchemaLocation(*first) || first->ns == nullptr ||
        FromXml(first->ns->href) != kInstanceNamespace)
        return false;
    for (const xmlAttr* other = first->next; other != nullptr; other = other->next)
        if (IsSchemaLocation(*other)) return false;
    return true;
}

}  // namespace

std::optional<RenamingSheet> FindRenaming(const xsltStylesheet& sheet) {
    const xmlNode* const root = xmlDocGetRootElement(sheet.doc);
    for (const xmlNode* child = root->children; child != nullptr; child = child->next)
        if (child->type == XML_ELEMENT_NODE && FromXml(child->name) == "onlyRenames" &&
            child->ns != nullptr && FromXml(child->ns->href) == kMarkNamespace)
            return RenamingSheet{AttributeOf(*child, "from"), AttributeOf(*child, "to")};
    return std::nullopt;
}

bool HoldsOneNamespace(const xmlDoc& document) {
    const xmlNode* const root = document.children;
    if (root == nullptr || root->next != nullptr || root->type != XML_ELEMENT_NODE ||
        FromXml(root->name) != "QEL" || root->ns == nullptr || root->ns != root->nsDef ||
        root->ns->prefix != nullptr || !HasOwnSchemaLocation(*root))
        return false;
    for (const xmlNode* node = root; node != nullptr;) {
        if (node->type == XML_ELEMENT_NODE ? node->ns != root->ns : node->type != XML_TEXT_NODE)
            return false;
        if (node->type == XML_ELEMENT_NODE && node->children != nullptr) {
            node = node->children;
            continue;
        }
        while (node != root && node->next == nullptr) node = node->parent;
        node = node == root ? nullptr : node->next;
    }
    return true;
}

bool Rename(xmlDoc& document, const RenamingSheet& sheet) {
    xmlNode& root = *document.children;
    if (FromXml(root.ns->href) != sheet.from) return false;
    const std::string schema = sheet.to + " " + sheet.to + ".xsd";
    xmlChar* const space = xmlStrdup(ToXml(sheet.to.c_str()));
    if (space == nullptr) throw std::bad_alloc();
    xmlFree(const_cast<xmlChar*>(root.ns->href));
    root.ns->href = space;
    xmlSetNsProp(&root, root.properties->ns, ToXml("schemaLocation"), ToXml(schema.c_str()));
    return true;
}
