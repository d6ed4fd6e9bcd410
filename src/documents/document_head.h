// What the documents beside a program have in common: their head, and print positions.
#pragma once

#include <string>
#include <string_view>

#include "model/store.h"
#include "platform/clock.h"

namespace ostrand {

// Brings a line up to a print position, counted from 1: what is appended next stands there. A
// text that has come so far already is parted from it by one blank.
void TabTo(std::string& line, int position);

// Of which project a document is, and when it was written.
struct DocumentHead {
  std::string title;  // of the project's path, without extension
  platform::Moment written;
};

// What sets the head of one document apart from that of another.
struct HeadStyle {
  std::string_view extension;     // ".VKD"
  std::string_view versionLabel;  // " QUILLON Vers: "
};
inline constexpr HeadStyle kTableDescriptionHead = {".VKD", " QUILLON Vers: "};
inline constexpr HeadStyle kWiringDiagramHead = {".VKW", " QUILLON Vers : "};

// An empty line and the three lines of the head, each with its CR LF.
std::string HeadLines(const DocumentHead& head, const General& general, const HeadStyle& style);

}  // namespace ostrand
