#include "Update/VokUpdateTweak190.h"

#include <QelTools/Exception.h>

#include "Update/VersionChain.h"

#include <utility>

VokUpdateTweak190::VokUpdateTweak190(std::string previousFilenameForm)
    : previousForm(std::move(previousFilenameForm)) {}

bool VokUpdateTweak190::IsCompatible(const std::string& version) {
    return VersionChain::IsSupersetOnly(version);
}

void VokUpdateTweak190::Update(std::ostream&, InputBuffer&, const std::string& version) {
    VersionChain::IsSupersetOnly(version);  // refuses a version that is no version at all
    QelTools::Common::ThrowException("This build cannot update documents of version \"" + version +
                                     "\" yet.");
}
