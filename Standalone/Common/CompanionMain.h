#pragma once

/// What every companion program does around its commands: the standard streams and the scene
/// library are up while `run` works; what it throws becomes a line on standard error and status 1.
/// A standard output that cannot be written is a failure, too.
int CompanionMain(const char* name, int argc, const char* const* argv,
                  int (*run)(int argc, const char* const* argv));
