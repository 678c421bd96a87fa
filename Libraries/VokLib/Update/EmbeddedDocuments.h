#pragma once

/// The texts of the update documents and stylesheets by URI: two parallel arrays, sorted by URI,
/// ended by a null. The source is made from the files of Update/Documents when the library is
/// built.
extern const char* const kEmbeddedUris[];
extern const char* const kEmbeddedTexts[];
