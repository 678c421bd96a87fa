#pragma once

#include <libxml/tree.h>
#include <libxslt/xsltInternals.h>

#include <optional>
#include <string>

/// What a stylesheet says of itself when all it does is to move a document from one namespace to
/// the next, without anything foreign.
struct RenamingSheet {
    std::string from;
    std::string to;
};

/// Nothing for a stylesheet that does more, or does not say.
std::optional<RenamingSheet> FindRenaming(const xsltStylesheet& sheet);

/// True when `document` is as such a stylesheet leaves it: a root called QEL, told by one
/// declaration whose namespace holds every element, and texts.
bool HoldsOneNamespace(const xmlDoc& document);

/// Does in place what `sheet` would do to a document for which HoldsOneNamespace was true, in no
/// time: the names of the elements share one declaration. False, and nothing changed, when the
/// document is of another version.
bool Rename(xmlDoc& document, const RenamingSheet& sheet);
