#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace QelTools::Common {

/// The hash of tables whose keys come from documents, for look-ups alone: nothing walks such a
/// table, so that no order of it reaches a file or a message.
///
/// A polynomial over the field of 2^61 - 1 at a point that each process draws for itself (Carter
/// and Wegman, Universal Classes of Hash Functions, 1979). Two keys of n bytes meet at fewer than
/// n of all points, so nobody can write a document whose names all meet and make a table slow, as
/// is done to hashes that are the same in each run.
struct KeyedHash {
    std::size_t operator()(std::string_view text) const;
    std::size_t operator()(std::uint64_t number) const;
};

}  // namespace QelTools::Common
