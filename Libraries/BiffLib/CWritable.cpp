#include <BiffLib/CWritable.h>

namespace Biff {

void CWritable::WriteDirectoryEntry(std::ostream&, std::uint32_t, std::uint32_t) {}

}  // namespace Biff
