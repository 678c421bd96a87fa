#pragma once

#include "Support/ElementTree.h"
#include "Support/Random.h"
#include "Support/Vocabulary.h"

/// Changes documents so that most of them can still be read: elements, attributes and values that
/// the vocabulary has at that place, numbers at the edges, links that lead somewhere.
class ElementTreeMutator {
  public:
    /// `words` is kept, not owned.
    explicit ElementTreeMutator(const Vocabulary& words) : vocabulary(words) {}

    /// Up to three changes.
    void Mutate(ElementDocument& document, Random& random) const;
    /// Puts a subtree of `other` where one of its kind stands, or beside it.
    void CrossOver(ElementDocument& document, const ElementDocument& other, Random& random) const;

  private:
    void MutateOnce(Element& root, Random& random) const;
    void Mend(Element& root, Random& random) const;

    const Vocabulary& vocabulary;
};
