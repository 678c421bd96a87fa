#pragma once

class VokAnimChannel;

namespace VokAnimUtil {

/// A document is not held to its own counts. These throw a VokException for a channel whose arrays
/// are shorter than its keys ask for, so that what follows can index freely.

void CheckHasKeys(const VokAnimChannel& channel);
void CheckValues(const VokAnimChannel& channel);
void CheckTimes(const VokAnimChannel& channel);
void CheckTangents(const VokAnimChannel& channel);

/// Truncation to a 32-bit integer as x86 does it: what does not fit, and not-a-number, give the
/// least integer.
int Truncate(float value);

}  // namespace VokAnimUtil
