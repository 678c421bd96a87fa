#pragma once

#include "Description.h"

#include <string>

/// A drawing for documents and reviews: the bind pose from the front (x to the right, y up) and
/// from the side (z to the right), levels of detail by colour, and below it what the procedural
/// items do, in the order of their evaluation. `title` is in UTF-8.
std::string DrawSvg(const Description::Skeleton& skeleton, const std::string& title);

/// A page that needs nothing but itself, in which the figure can be turned and zoomed, its joints
/// picked and levels of detail dropped, with the mouse or the keyboard.
std::string MakePage(const Description::Skeleton& skeleton, const std::string& title);

/// Text that can stand in XML and HTML, between tags and in attributes.
std::string EscapeXml(const std::string& text);

/// What an item does, a line for each constraint and driven channel.
struct StageLine {
    std::string text;          ///< "aim of Eye by Hand", "Twist.rotateX from Hand.rotateX"
    std::vector<int> written;  ///< joints
    std::vector<int> read;
};
std::vector<StageLine> StageLines(const Description::Skeleton& skeleton,
                                  const Description::Item& item);
