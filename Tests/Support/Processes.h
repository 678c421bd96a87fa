#pragma once

#include <string>
#include <vector>

/// The processes that run as proxies of the registry whose pipe or database stands in `folder`.
/// Where a pipe is the whole session's, every proxy is.
std::vector<int> RunningProxies(const std::string& folder);

/// Of those the one that serves, or served last; 0 for none.
int ServingProxy(const std::string& folder);

/// Ends a process at once, whatever it does. 0 is none.
void KillProcess(int process);
