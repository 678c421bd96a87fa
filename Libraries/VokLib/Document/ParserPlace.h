#pragma once

#include "Document/VokTextFault.h"

struct _xmlParserCtxt;

/// What a parser of libxml2 has reached.
TextPlace PlaceOf(const _xmlParserCtxt& parser);

/// The place behind all that was pushed, for the parser holds back what it cannot decide on yet.
TextPlace PlaceBehindInput(const _xmlParserCtxt& parser);
