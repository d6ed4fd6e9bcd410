// The summary: what a project will do and how long each piece of a scan takes.
#pragma once

#include <string>

#include "documents/rich_text.h"
#include "model/options.h"
#include "model/store.h"
#include "platform/forms.h"

namespace ostrand {

// What the summary shows beside the project itself.
struct SummaryLook {
  std::string projectName;  // shown in upper case; "NoName" before the project has a file
  Colour text = kWindowText;
  Colour heading = kWindowText;  // of the underlined headings
  NumberFormat numbers = {};     // of multipliers and offsets
};

// A number in such a form: 1234.5 as "1234.5", "1,234.50", "1.23e3", "1234.5" with 2 digits.
std::string FormattedNumber(float value, const NumberFormat& format);

// Fills the box from empty: the head, the tables, a section for each kind of item in use, and the
// shortest possible scan time. Columns are for a fixed pitch font, 52 wide; a field that has no
// room in its column is parted from the one before by a blank. The tables' record sizes and
// `EstMeasTime` are set in the store on the way. A failure is reported to the user under
// ".Summarize"; the box keeps what was written until then, and the result is false.
bool Summarize(ProjectStore& store, const SummaryLook& look, RichText& box, platform::Forms& forms);

}  // namespace ostrand
