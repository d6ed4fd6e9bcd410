// The summary: the project in short, and the time of each part of a scan.
#pragma once

#include <string>

#include "documents/rich_text.h"
#include "model/options.h"
#include "model/store.h"
#include "platform/forms.h"

namespace ostrand {

// Options of the summary.
struct SummaryLook {
  std::string projectName;  // shown in upper case; "NoName" before the project has a file
  Colour text = kWindowText;
  Colour heading = kWindowText;  // of the underlined headings
  NumberFormat numbers = {};     // of multipliers and offsets
};

// A number in the given form: 1234.5 as "1234.5", "1,234.50", "1.23e3", "1234.5" with 2 digits.
std::string FormattedNumber(float value, const NumberFormat& format);

// Fills the empty box: the head, the tables, a section for each kind of item in use, and the
// shortest possible scan time. Columns are for a fixed pitch font, 52 wide; a field that does not
// fit its column is separated by one blank. Sets the tables' record sizes and `EstMeasTime` in the
// store. A failure is reported to the user under ".Summarize"; the box keeps what was written so
// far, and the result is false.
bool Summarize(ProjectStore& store, const SummaryLook& look, RichText& box, platform::Forms& forms);

}  // namespace ostrand
