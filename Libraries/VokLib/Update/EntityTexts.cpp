#include "Update/EntityTexts.h"

#include "Update/XmlHandles.h"

#include <cstring>
#include <new>

namespace {

bool IsText(const xmlNode* node) {
    return node != nullptr && node->type == XML_TEXT_NODE;
}

void Delete(xmlNode* node) {
    xmlUnlinkNode(node);
    xmlFreeNode(node);
}

}  // namespace

xmlNode* EntityTexts::FirstBehind() const {
    return before != nullptr ? before->next : parent->children;
}

void EntityTexts::Hold(xmlNode& holder) {
    xmlNode* const last = holder.last;
    if (parent != nullptr && (parent != &holder || last != FirstBehind())) Release();
    if (!IsText(last)) return;
    text += FromXml(last->content);
    parent = &holder;
    before = last->prev;
    Delete(last);
}

void EntityTexts::Release() {
    if (parent == nullptr) return;
    xmlNode* const behind = FirstBehind();
    if (IsText(behind)) {
        text += FromXml(behind->content);
        Delete(behind);
    }
    xmlNode* const whole = xmlNewDocText(parent->doc, nullptr);
    if (whole == nullptr) throw std::bad_alloc();
    // Those that set a content take its length as an int.
    whole->content = static_cast<xmlChar*>(xmlMalloc(text.size() + 1));
    if (whole->content != nullptr) std::memcpy(whole->content, text.c_str(), text.size() + 1);
    xmlNode* const next = FirstBehind();
    if (next != nullptr)
        xmlAddPrevSibling(next, whole);
    else
        xmlAddChild(parent, whole);
    parent = nullptr;
    text.clear();
}
