#pragma once

/// Gives up the powers of the superuser while it lives, for whom no permission is ever missing.
/// Where that is not a matter of the running process, the tests are started as an ordinary user.
class OrdinaryUser {
  public:
    OrdinaryUser();
    OrdinaryUser(const OrdinaryUser&) = delete;
    OrdinaryUser& operator=(const OrdinaryUser&) = delete;
    ~OrdinaryUser();

  private:
    bool wasSuperuser;
};
