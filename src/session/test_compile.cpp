#include "session/test_compile.h"

#include <memory>
#include <utility>

#include "platform/paths.h"

namespace ostrand {
namespace {

platform::ProgramCall versionCall(const std::string& compiler, const std::string& report) {
  return {{compiler, "-d", report}, compiler + " -d " + report};
}

platform::ProgramCall compileCall(const std::string& compiler, const std::string& source,
                                  const std::string& report, bool newCompiler) {
  const std::string files = "\"" + source + "\" \"" + report + "\"";
  if (newCompiler) return {{compiler, source, report}, compiler + " " + files};
  return {{compiler, "-t", source, report}, compiler + " -t " + files};
}

platform::MessageBox resultBox(const std::string& sourceName, const VersionReport& version,
                               const std::string& message) {
  return {.title = "COMPILE RESULT",
          .text = "Pre-Compiler: " + sourceName + "\r\nVersion No: " + version.version +
                  "   Date Code: " + version.dateCode + "\r\n\r\n" + ShownInBox(message),
          .icon = platform::Icon::kInformation};
}

}  // namespace

std::string InFolder(std::string_view folder, std::string_view title) {
  return platform::WithSeparator(folder).append(title);
}

TestCompile::TestCompile(Surroundings around, std::string_view workDir)
    : around_(around),
      versionFile_(InFolder(workDir, "VERCOMP.TXT")),
      resultFile_(InFolder(workDir, "PRECOMP.TXT")) {}

Result<> RemoveOld(platform::FileSystem& files, const std::string& path) {
  return files.Taken(path) ? files.Delete(path) : Result<>(Done{});
}

bool TestCompile::ParseCompileResults(ProjectStore& store, const MuxLines& muxLines,
                                      const std::string& sourceName,
                                      const std::string& compilerPath, bool alwaysShow) {
  VersionReport version;
  CompileVerdict verdict;
  std::string text;
  skipped_.clear();
  if (report(versionCall(compilerPath, versionFile_), versionFile_, "Skipped version.", text)) {
    version = ReadVersionReport(text);
    const auto call = compileCall(compilerPath, sourceName, resultFile_, version.newCompiler);
    if (report(call, resultFile_, "Skipped pre-compile.", text)) {
      StoreMeasuredTimes(store, text, muxLines);
      verdict = ReadCompileVerdict(text, version.newCompiler);
      // Compilers mark a bad program by an exit code; with a good report it is a fault.
      if (failure_ && (verdict.compiled || failure_->crashed)) {
        verdict = {false, "The compiler " + failure_->text + ".\r\n\r\n" + text};
      }
      if (!verdict.compiled || alwaysShow) {
        around_.forms.ShowBox(resultBox(sourceName, version, verdict.message));
      }
    }
  }
  // A report that cannot be removed makes the next compile fail.
  static_cast<void>(RemoveOld(around_.files, versionFile_));
  static_cast<void>(RemoveOld(around_.files, resultFile_));
  return verdict.compiled;
}

// Runs the compiler for one report and reads the text that it wrote to `path`.
bool TestCompile::report(const platform::ProgramCall& call, const std::string& path,
                         std::string_view skippedText, std::string& text) {
  const std::string why = outcome(call, path, text);
  if (why.empty()) return true;
  around_.forms.SetHelpLine(std::string(skippedText));
  skipped_ = std::string(skippedText).append(" ").append(why);
  return false;
}

// Why the report is missing; empty when it was read.
std::string TestCompile::outcome(const platform::ProgramCall& call, const std::string& path,
                                 std::string& text) {
  // An old report could be mistaken for the new one.
  if (const auto removed = RemoveOld(around_.files, path); !removed) return removed.ErrorText();
  auto compiler = around_.processes.Start(call);
  if (!compiler) return compiler.ErrorText();
  const bool written = waitFor(*compiler.Value(), path);
  const bool hangs = compiler.Value()->Running();
  failure_ = compiler.Value()->Failure();
  compiler.Value()->End();
  if (around_.files.Size(path) > kMaxReportBytes) {
    return path + ": the report is larger than 4 MB";
  }
  if (!written) {
    return hangs ? call.words.front() + " did not end in time"
                 : call.words.front() + withoutReport(path);
  }
  const auto read = around_.files.Read(path);
  if (!read) return read.ErrorText();
  text = ReportText(read.Value());
  return {};
}

// How a compiler ended without a report, or with a report that is not a regular file.
std::string TestCompile::withoutReport(const std::string& path) const {
  if (around_.files.Taken(path) && !around_.files.Exists(path)) {
    return " wrote a report that is not a regular file";
  }
  return (failure_ ? " " + failure_->text : " ended") + " without a report";
}

// First until the file exists, then until it has content and its writer has ended, so that no
// partial report is read. A report that grows too large ends the wait.
bool TestCompile::waitFor(platform::Process& compiler, const std::string& path) {
  return poll(compiler, [&](bool) { return around_.files.Exists(path); }) &&
         poll(compiler, [&](bool ended) {
           const auto size = around_.files.Size(path);
           return (ended && size > 0) || size > kMaxReportBytes;
         });
}

// Polls until `reached`; false after the maximum of rounds, and when the compiler ended before.
template <class Reached>
bool TestCompile::poll(platform::Process& compiler, Reached&& reached) {
  for (int round = 0; round < kMaxCompileRounds; ++round) {
    const bool ended = !compiler.Running();  // checked first: its output is then on the disk
    if (reached(ended)) return true;
    if (ended) return false;
    around_.forms.DoEvents();
    around_.processes.Rest();
  }
  return false;
}

}  // namespace ostrand
