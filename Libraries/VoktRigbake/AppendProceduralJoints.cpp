#include "AppendProceduralJoints.h"

#include <QelTools/Exception.h>

void AppendProceduralJoints(const ProceduralJoints& /*procedural*/, Biff::CBlock& /*block*/) {
    QelTools::Common::ThrowException(
        "Writing procedural joints is not supported by this build yet.");
}
