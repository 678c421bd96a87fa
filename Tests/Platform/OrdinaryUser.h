#pragma once

#include <unistd.h>

/// Gives up the powers of the superuser while it lives, for whom no permission is ever missing.
class OrdinaryUser {
  public:
    OrdinaryUser() : isSuperuser(geteuid() == 0) {
        if (isSuperuser && seteuid(kNobody) != 0) isSuperuser = false;
    }
    OrdinaryUser(const OrdinaryUser&) = delete;
    OrdinaryUser& operator=(const OrdinaryUser&) = delete;
    ~OrdinaryUser() {
        if (isSuperuser && seteuid(0) != 0) _exit(1);
    }

  private:
    static constexpr uid_t kNobody = 65534;
    bool isSuperuser;
};
