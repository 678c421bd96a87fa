#include "Support/OrdinaryUser.h"

#include <unistd.h>

namespace {

constexpr uid_t kNobody = 65534;

}  // namespace

OrdinaryUser::OrdinaryUser() : wasSuperuser(geteuid() == 0) {
    if (wasSuperuser && seteuid(kNobody) != 0) wasSuperuser = false;
}

OrdinaryUser::~OrdinaryUser() {
    if (wasSuperuser && seteuid(0) != 0) _exit(1);
}
