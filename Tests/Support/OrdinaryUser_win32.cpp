#include "Support/OrdinaryUser.h"

OrdinaryUser::OrdinaryUser() : wasSuperuser(false) {}

OrdinaryUser::~OrdinaryUser() = default;
