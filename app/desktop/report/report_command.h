// The report as a command, without a window.
#pragma once

#include <QString>

#include "platform/quiet_forms.h"
#include "platform/surroundings.h"
#include "report/report_options.h"

namespace ostrand::desktop {

// Forms of a command: a box is a line on the standard error, its question gets the answer that
// changes nothing.
class CommandForms final : public platform::QuietForms {
 public:
  platform::Answer ShowBox(const platform::MessageBox& box) override;
};

// Writes the report of the project at `project` to `file`, or the wiring or the tables, by the
// extension of its name. False after a message on the standard error; an old file then stays.
bool WriteReport(const platform::Surroundings& around, const std::string& project,
                 const QString& file, const ReportOptions& options);

}  // namespace ostrand::desktop
