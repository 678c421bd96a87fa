#pragma once

#include <VokLib/Links/VokTextTree.h>

#include <cstddef>
#include <functional>
#include <string>
#include <unordered_map>

class VokObj;
class VokObjLink;

/// Links that led nowhere, in the order of their texts "owner->path" ("?" for no owner). It holds
/// on to names and paths and makes one text at a time, when it is asked for, for the path of an
/// owner can be nearly as long as the document: time and memory follow the document. The links and
/// their owners must stay as they are.
class VokUnresolvedLinks {
  public:
    void Add(const VokObjLink& link);

    /// How many different texts there are.
    std::size_t Count() const;
    /// Hands over the first of them, sorted, each once and while it is called: at most `most`, and
    /// together at most VokLimits::kMaxUnresolvedText bytes, but for a first that is longer. How
    /// many that were.
    std::size_t VisitTexts(std::size_t most,
                           const std::function<void(const std::string&)>& visit) const;

  private:
    VokTextTree::Place PlaceOf(const VokObj* owner);

    VokTextTree texts;
    std::unordered_map<const VokObj*, VokTextTree::Place> places;  // behind the paths of owners
};
