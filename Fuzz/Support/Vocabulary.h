#pragma once

#include "Support/ElementTree.h"

#include <deque>
#include <map>
#include <set>
#include <string>
#include <vector>

/// What documents are made of, learnt from samples: which elements stand in which, what their
/// attributes and texts hold, and what their links lead to.
class Vocabulary {
  public:
    struct Word {
        std::map<std::string, std::vector<std::string>> values;      ///< by attribute, each once
        std::map<std::string, std::set<std::string>> linkedObjects;  ///< elements, by attribute
        std::vector<std::string> texts;                              ///< each once
        std::vector<const Element*> children;                        ///< whole subtrees
    };

    Vocabulary() = default;
    Vocabulary(const Vocabulary&) = delete;
    Vocabulary& operator=(const Vocabulary&) = delete;

    void Learn(ElementDocument sample);
    /// The word for an element inside `parent`; an empty one when no sample had it.
    const Word& Of(const Element& element, const Element* parent) const;

  private:
    void Learn(const Element& element, const Element* parent,
               const std::map<std::string, std::string>& elementsByPath);

    std::deque<ElementDocument> samples;
    std::map<std::string, Word> words;
};
