// The test compile: the logger's own compiler run over a program.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "model/store.h"
#include "platform/filesystem.h"
#include "platform/forms.h"
#include "platform/process.h"
#include "session/compile_reports.h"

namespace ostrand {

// Polling rounds while waiting for the compiler, with a pause of about a millisecond after each.
inline constexpr int kMaxCompileRounds = 50000;

class TestCompile {
 public:
  struct Surroundings {
    platform::FileSystem& files;
    platform::Forms& forms;
    platform::Processes& processes;
  };

  // Reports are written to the folder `workDir`.
  TestCompile(Surroundings around, std::string_view workDir);

  // Compiles `sourceName` by the compiler at `compilerPath`, stores the measured times and shows a
  // bad result, or any result with `alwaysShow`. True when the report shows success and the
  // compiler exited normally. A compiler without a report, or whose old report cannot be removed,
  // only shows on the help line and in Skipped.
  bool ParseCompileResults(ProjectStore& store, const MuxLines& muxLines,
                           const std::string& sourceName, const std::string& compilerPath,
                           bool alwaysShow);
  // What the last call skipped, and why; empty for nothing.
  [[nodiscard]] const std::string& Skipped() const { return skipped_; }

 private:
  bool report(const platform::ProgramCall& call, const std::string& path,
              std::string_view skippedText, std::string& text);
  std::string outcome(const platform::ProgramCall& call, const std::string& path,
                      std::string& text);
  std::string withoutReport(const std::string& path) const;
  bool waitFor(platform::Process& compiler, const std::string& path);
  template <class Reached>
  bool poll(platform::Process& compiler, Reached&& reached);

  Surroundings around_;
  std::string versionFile_;
  std::string resultFile_;
  std::string skipped_;
  std::optional<platform::ProcessFailure> failure_;  // of the last call
};

// Removes the file at `path`, if any.
Result<> RemoveOld(platform::FileSystem& files, const std::string& path);

// The path of `title` in `folder`, with or without a trailing separator.
std::string InFolder(std::string_view folder, std::string_view title);

}  // namespace ostrand
