#pragma once

#include <cstddef>
#include <cstdint>
#include <set>
#include <string>
#include <unordered_map>
#include <vector>

class VokObj;
class VokObjLink;

/// Links that led nowhere, in the order of their texts "owner->path" ("?" for no owner). It holds
/// on to the links and makes a text only when it is asked for; of texts that come to more than
/// VokLimits::kMaxUnresolvedText the first are kept and the others counted, for the path of an
/// owner can be nearly as long as the document. The links and their owners must stay as they are.
class VokUnresolvedLinks {
  public:
    void Add(const VokObjLink& link);

    /// How many different texts there are.
    std::size_t Count() const;
    /// The first of them, sorted, each once.
    std::vector<std::string> MakeTexts() const;

  private:
    struct PathOfOwner {
        std::size_t length;
        std::uint64_t hash;
    };
    struct Entry {
        const VokObjLink* link;
        std::size_t length;
    };
    struct ByText {
        bool operator()(const Entry& a, const Entry& b) const;
    };

    PathOfOwner Measure(const VokObj* owner);

    std::set<Entry, ByText> kept;
    std::size_t keptBytes = 0;
    bool isCut = false;
    std::vector<std::uint64_t> hashes;  // of all texts
    std::unordered_map<const VokObj*, PathOfOwner> paths;
};
