#pragma once

/// Serves the hash registry at the pipe of this user, or steps aside for the process that serves it
/// already. Returns the exit status: 0 when it served or stepped aside, 1 when it could do neither.
int RunProxy();
