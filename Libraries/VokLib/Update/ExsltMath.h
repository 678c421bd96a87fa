#pragma once

/// Registers the EXSLT math functions with the stylesheet processor. Their library brings along
/// others that nobody else needs; where it is a shared one it is not loaded before this is called.
void RegisterExsltMath();
