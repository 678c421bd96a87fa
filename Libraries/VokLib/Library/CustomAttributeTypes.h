#pragma once

/// Puts the eleven custom attribute types of the format into the registry.
void RegisterCustomAttributes();
void UnregisterCustomAttributes();
