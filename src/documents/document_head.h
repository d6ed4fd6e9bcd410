// Shared parts of the documents beside a program: their head, and print positions.
#pragma once

#include <string>
#include <string_view>

#include "model/store.h"
#include "platform/clock.h"

namespace ostrand {

// Fills a line with blanks up to a print position, counted from 1, for the text appended next. A
// line that is already that long gets one blank.
void TabTo(std::string& line, int position);

// The project of a document and the time of writing.
struct DocumentHead {
  std::string title;  // the project's path without extension
  platform::Moment written;
};

// The differences between the heads of documents.
struct HeadStyle {
  std::string_view extension;     // ".VKD"
  std::string_view versionLabel;  // " QUILLON Vers: "
};
inline constexpr HeadStyle kTableDescriptionHead = {".VKD", " QUILLON Vers: "};
inline constexpr HeadStyle kWiringDiagramHead = {".VKW", " QUILLON Vers : "};

// An empty line and the three lines of the head, each with its CR LF.
std::string HeadLines(const DocumentHead& head, const General& general, const HeadStyle& style);

}  // namespace ostrand
