#pragma once

#include <libxml/tree.h>

#include <string>

/// Holds back the text in which entities are replaced: the tree's own joining copies, at each of
/// them, all that stands in front of it.
class EntityTexts {
  public:
    /// In front of the replacement of an entity: takes what ends `parent`, if it is text, out of
    /// the tree.
    void Hold(xmlNode& parent);
    /// Puts what was taken out of `parent` back: in front of any element and the end of `parent`.
    void Release();

  private:
    xmlNode* FirstBehind() const;

    xmlNode* parent = nullptr;  // none when nothing is held
    xmlNode* before = nullptr;  // the child in front of the text, if any
    std::string text;
};
