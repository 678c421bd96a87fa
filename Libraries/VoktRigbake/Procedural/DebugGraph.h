#pragma once

#include "Procedural/StageOrder.h"

#include <iosfwd>

/// Prints the stages with what they hold.
void PrintStages(const std::vector<Stage>& stages, std::ostream& stream);

/// Writes the relations in the dot language. Objects are called by their number in the document, so
/// that one scene gives the same text at every run.
void WriteGraph(const Dependencies& dependencies, std::ostream& stream);

/// Writes the graph to a new file in the folder for temporary files, has Graphviz draw it beside
/// that file and shows the picture. What cannot be written or drawn is left out in silence.
void ShowGraph(const Dependencies& dependencies);
