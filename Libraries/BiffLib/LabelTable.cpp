#include "LabelTable.h"

#include <QelTools/Exception.h>

#include <map>

using QelTools::Common::TextException;

namespace Biff::LabelTable {

namespace {

constexpr char kWrittenTwice[] =
    "Offset written out twice, this probably indicates that a label from Biff::ReserveLabel was "
    "passed to Biff::AppendLabel( label ) more than once.";
constexpr char kLost[] = "Failed to find offset for label.";

std::map<std::uint32_t, std::uint32_t>& Table() {
    static std::map<std::uint32_t, std::uint32_t> table;
    return table;
}

}  // namespace

void Clear() {
    Table().clear();
}

void Enter(std::uint32_t label, std::uint32_t position) {
    if (!Table().emplace(label, position).second) throw TextException(kWrittenTwice);
}

bool Contains(std::uint32_t label) {
    return Table().contains(label);
}

std::uint32_t PositionOfLabel(std::uint32_t label) {
    const auto found = Table().find(label);
    if (found == Table().end()) throw TextException(kLost);
    return found->second;
}

}  // namespace Biff::LabelTable
