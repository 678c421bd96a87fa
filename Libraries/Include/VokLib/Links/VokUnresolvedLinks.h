#pragma once

#include <VokLib/Links/VokTextTree.h>

#include <cstddef>
#include <string>
#include <unordered_map>
#include <vector>

class VokObj;
class VokObjLink;

/// Links that led nowhere, in the order of their texts "owner->path" ("?" for no owner). It holds
/// on to names and paths and makes a text only when it is asked for, for the path of an owner can
/// be nearly as long as the document: time and memory follow the document. Of texts that come to
/// more than VokLimits::kMaxUnresolvedText bytes the first are made and the others counted. The
/// links and their owners must stay as they are.
class VokUnresolvedLinks {
  public:
    void Add(const VokObjLink& link);

    /// How many different texts there are.
    std::size_t Count() const;
    /// The first of them, sorted, each once.
    std::vector<std::string> MakeTexts() const;

  private:
    VokTextTree::Place PlaceOf(const VokObj* owner);

    VokTextTree texts;
    std::unordered_map<const VokObj*, VokTextTree::Place> places;  // behind the paths of owners
};
