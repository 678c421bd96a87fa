#pragma once

namespace Platform {

/// The portable number (of errno) for why the last call of this thread failed: the reasons that can
/// meet somebody who writes files, EIO for any other.
int LastErrorNumber();

}  // namespace Platform
