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
                  "   Date Code: " + version.dateCode + "\r\n\r\n" + message,
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

bool TestCompile::ParseCompileResults(ProjectStore& store, const MuxLines& muxLines,
                                      const std::string& sourceName,
                                      const std::string& compilerPath, bool alwaysShow) {
  VersionReport version;
  CompileVerdict verdict;
  std::string bytes;
  skipped_.clear();
  if (report(versionCall(compilerPath, versionFile_), versionFile_, "Skipped version.", bytes)) {
    version = ReadVersionReport(bytes);
    const auto call = compileCall(compilerPath, sourceName, resultFile_, version.newCompiler);
    if (report(call, resultFile_, "Skipped pre-compile.", bytes)) {
      StoreMeasuredTimes(store, bytes, muxLines);
      verdict = ReadCompileVerdict(bytes, version.newCompiler);
      if (!verdict.compiled || alwaysShow) {
        around_.forms.ShowBox(resultBox(sourceName, version, verdict.message));
      }
    }
  }
  remove(versionFile_);
  remove(resultFile_);
  return verdict.compiled;
}

// Runs the compiler for one report and takes what it wrote to `path`. An old report is out of the
// way before, or it would be taken for the new one.
bool TestCompile::report(const platform::ProgramCall& call, const std::string& path,
                         std::string_view skippedText, std::string& bytes) {
  remove(path);
  const std::string why = outcome(call, path, bytes);
  if (why.empty()) return true;
  around_.forms.SetHelpLine(std::string(skippedText));
  skipped_ = std::string(skippedText).append(" ").append(why);
  return false;
}

// Why there is no report; empty when it was read.
std::string TestCompile::outcome(const platform::ProgramCall& call, const std::string& path,
                                 std::string& bytes) {
  auto compiler = around_.processes.Start(call);
  if (!compiler) return compiler.ErrorText();
  const bool written = waitFor(*compiler.Value(), path);
  const bool hangs = compiler.Value()->Running();
  compiler.Value()->End();
  if (!written) {
    return call.words.front() + (hangs ? " did not end in time" : " ended without a report");
  }
  auto read = around_.files.Read(path);
  if (!read) return read.ErrorText();
  bytes = std::move(read.Value());
  return {};
}

// First until the file exists, then until it has content and its writer has ended, so that no half
// report is read.
bool TestCompile::waitFor(platform::Process& compiler, const std::string& path) {
  return poll(compiler, [&](bool) { return around_.files.Exists(path); }) &&
         poll(compiler, [&](bool ended) { return ended && around_.files.Size(path) > 0; });
}

// Rounds until `reached`; false at the bound, and when the compiler has ended before.
template <class Reached>
bool TestCompile::poll(platform::Process& compiler, Reached&& reached) {
  for (int round = 0; round < kMostCompileRounds; ++round) {
    const bool ended = !compiler.Running();  // asked first: what it wrote is then there
    if (reached(ended)) return true;
    if (ended) return false;
    around_.forms.DoEvents();
  }
  return false;
}

void TestCompile::remove(const std::string& path) {
  if (around_.files.Exists(path)) static_cast<void>(around_.files.Delete(path));
}

}  // namespace ostrand
