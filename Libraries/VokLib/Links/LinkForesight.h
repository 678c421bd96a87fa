#pragma once

#include <array>
#include <cstddef>

class NameIndex;
class VokObjLink;
class VokPathCache;

/// Goes ahead of a loop that resolves one link after another. Most links of a large document name
/// one of very many children of one object, in an order of their own, so that the loop would wait
/// for the memory of each child. This tells the processor of a child some links earlier: first of
/// its slot in the index of names that was used last, then of the child in that slot. Nothing that
/// is found depends on it.
class LinkForesight {
  public:
    LinkForesight(const VokPathCache& pathCache, const VokObjLink* firstLink);

    /// Before each link, the first included.
    void Step();

  private:
    // Waits of some 100 ns each, and a link takes a tenth of a microsecond and more besides.
    static constexpr std::size_t kLinksAhead = 16;

    const VokPathCache& cache;
    const VokObjLink* far;
    std::array<std::size_t, kLinksAhead> hashes{};  // of the names that the next links end in
    std::size_t steps = 0;
};
