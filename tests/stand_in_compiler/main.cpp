// A stand-in for the logger's compiler: the same command lines, both reports in the old and the new
// form, and the failures of a real one. STAND_IN selects its behaviour. The time reported for a
// statement is 1000 microseconds plus one for each line of the program before it.
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <sstream>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

namespace {

std::string behaviour;

bool is(std::string_view name) { return behaviour == name; }
bool isOld() { return is("old") || is("oldbad") || is("oldcode"); }

void write(const std::string& path, const std::string& bytes) {
  std::ofstream(path, std::ios::binary) << bytes;
}

std::string read(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

// With "judge" the program itself determines whether it is good.
bool isBad(const std::string& source) {
  return is("bad") || is("oldbad") ||
         (is("judge") && read(source).find("does not compile") != std::string::npos);
}

[[noreturn]] void hang() {
  for (;;) ::pause();
}

std::string lines(std::initializer_list<std::string> parts) {
  std::string text;
  for (const std::string& part : parts) text += part + (is("lf") ? "\n" : is("cr") ? "\r" : "\r\n");
  return text;
}

std::string versionReport() {
  if (isOld()) {
    return lines({"Logger compiler", "[Version]", "VERSION: 4.2 DATE: 051507", "051507"});
  }
  if (is("exact")) return lines({"[Version] VERSION: 5.0 DATE: 060607"});
  return lines({"Logger compiler", "[Version] VERSION: 6.3 DATE: 051508"});
}

constexpr std::string_view kMeasured =
    " Battery PanelTemp TCDiff TCSE VoltSE VoltDiff BrFull BrFull6W BrHalf BrHalf3W BrHalf4W "
    "PulseCount TK40M ";

// The scan of the program, statement by statement.
std::string times(const std::string& source) {
  std::ifstream program(source, std::ios::binary);
  std::string text = lines({"Line 1: Scan: (Subroutine)", "Line 2: VoltSE = 77"});
  bool inScan = false;
  int number = 0;
  for (std::string line; std::getline(program, line);) {
    ++number;
    const std::string statement = line.substr(std::min(line.find_first_not_of(' '), line.size()));
    if (!inScan && statement.starts_with("Scan(")) {
      inScan = true;
      text += lines({"Line " + std::to_string(number) + ": Scan: 10 mSec"});
    }
    if (!inScan) continue;
    if (statement.starts_with("NextScan")) break;
    const std::string name = statement.substr(0, statement.find('('));
    if (kMeasured.find(" " + name + " ") == std::string_view::npos) continue;
    text += lines({"Line " + std::to_string(number) + ": " + name + " = " +
                   std::to_string(1000 + number) + ".4 uSec"});
  }
  return text + lines({"Line 9999: Scan: 1 Sec", "Line 10000: VoltSE = 99"});
}

std::string compileReport(const std::string& source) {
  const std::string verdict =
      isBad(source) ? "Line 7: Undeclared variable" : source + " Compiled OK";
  if (isOld()) {
    return lines({"Old compiler"}) + times(source) + lines({"[Compile Results]", verdict, "End"});
  }
  return times(source) + lines({verdict, "Memory 12345"});
}

// Processes that hang: a child in the compiler's group, or one that has left it, with an orphan
// that has left both.
void leaveChildren() {
  if (::fork() != 0) return;
  if (is("child")) hang();
  ::setsid();
  if (::fork() != 0) hang();
  if (::fork() != 0) ::_exit(0);
  ::setsid();
  hang();
}

// Writes something else in place of a report. False if `what` is not such a behaviour.
bool spoil(const std::string& what, const std::string& report) {
  if (what == "none") return true;
  if (what == "code") std::exit(3);
  if (what == "crash") std::abort();
  if (what == "hang") hang();
  if (what == "empty") return write(report, ""), true;
  if (what == "folder") return ::mkdir(report.c_str(), 0777) == 0;
  if (what == "fifo") return ::mkfifo(report.c_str(), 0666) == 0;
  if (what == "dangling") return ::symlink("nowhere", report.c_str()) == 0;
  if (what == "large") return write(report, std::string((4 << 20) + 1, '\n')), true;
  if (what == "endless") {
    std::ofstream file(report, std::ios::binary);
    for (const std::string row(1 << 16, 'x');;) file << row << std::flush;
  }
  if (what == "binary") {
    std::string bytes;
    for (int at = 0; at < 5000; ++at) bytes += static_cast<char>(at * at / 7);
    return write(report, bytes), true;
  }
  return false;
}

void compile(const std::string& source, const std::string& report) {
  const std::string bytes = compileReport(source);
  if (spoil(behaviour, report)) return;
  if (is("cut") || is("cuthang")) {
    write(report, bytes.substr(0, bytes.size() / 2));
    if (is("cuthang")) hang();
    std::abort();
  }
  if (is("longline")) return write(report, std::string(3 << 20, 'y'));
  if (is("manylines")) {
    std::string text = "first line\n";
    for (int line = 0; line < 300'000; ++line) text += "error\n";
    return write(report, text + "last line\n");
  }
  if (is("slow")) {
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    write(report, bytes.substr(0, 20));
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
  }
  if (is("flood")) {
    const std::string row(1 << 16, 'x');
    for (int count = 0; count < 64; ++count) std::cout << row << std::flush, std::cerr << row;
  }
  if (is("extra")) {
    const std::filesystem::path folder = std::filesystem::path(report).parent_path();
    std::filesystem::create_directories(folder / "listing/deep");
    write(folder / "listing/deep/out.txt", "x");
    std::filesystem::create_symlink(folder, folder / "loop");
  }
  if (is("wipe")) std::filesystem::remove_all(std::filesystem::path(report).parent_path());
  if (is("child") || is("leave") || is("leavecrash") || is("leavehang")) leaveChildren();
  if (is("leavehang")) {
    write(std::getenv("STAND_IN_READY"), "");
    hang();
  }
  if (is("stop")) ::raise(SIGSTOP);
  write(report, bytes);
  if (is("aftercrash") || is("leavecrash")) std::abort();
  if (is("afterkill")) ::raise(SIGKILL);
  if (is("aftercode") || is("oldcode")) std::exit(3);
}

}  // namespace

int main(int count, char** words) {
  const char* asked = std::getenv("STAND_IN");
  behaviour = asked != nullptr ? asked : "good";
  const std::vector<std::string> arguments(words + 1, words + count);
  if (arguments.size() == 2 && arguments[0] == "-d") {
    const std::string version = "version";
    if (behaviour.starts_with(version) && spoil(behaviour.substr(version.size()), arguments[1])) {
      return 0;
    }
    write(arguments[1], versionReport());
    return 0;
  }
  const std::size_t first = isOld() ? 1 : 0;
  if (arguments.size() != first + 2 || (isOld() && arguments[0] != "-t")) return 3;
  compile(arguments[first], arguments[first + 1]);
  return isBad(arguments[first]) ? 1 : 0;
}
