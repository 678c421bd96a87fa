#pragma once

class VokWorld;
class VoktRigbake;

/// Throws a QelTools Exception where the component's flags ask for constraints or driven keys that
/// the scene has: a file without them would be wrong.
void RefuseProceduralJoints(const VoktRigbake& component, VokWorld& world);
