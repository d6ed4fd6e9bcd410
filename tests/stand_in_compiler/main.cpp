// A stand-in for the logger's compiler: the same command lines, both reports in the old and the
// new form, and the ways in which a real one fails. STAND_IN names what it does. The time that it
// reports of a statement is 1000 microseconds and one for each line of the program before it.
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <sstream>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

namespace {

std::string behaviour;

bool is(std::string_view name) { return behaviour == name; }
bool isOld() { return is("old") || is("oldbad"); }
bool isBad() { return is("bad") || is("oldbad"); }

void write(const std::string& path, const std::string& bytes) {
  std::ofstream(path, std::ios::binary) << bytes;
}

[[noreturn]] void hang() {
  for (;;) ::pause();
}

std::string lines(std::initializer_list<std::string> parts) {
  std::string text;
  for (const std::string& part : parts) text += part + (is("lf") ? "\n" : "\r\n");
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
  const std::string verdict = isBad() ? "Line 7: Undeclared variable" : source + " Compiled OK";
  if (isOld()) {
    return lines({"Old compiler"}) + times(source) + lines({"[Compile Results]", verdict, "End"});
  }
  return times(source) + lines({verdict, "Memory 12345"});
}

void compile(const std::string& source, const std::string& report) {
  const std::string bytes = compileReport(source);
  if (is("none")) return;
  if (is("empty")) return write(report, "");
  if (is("crash")) std::abort();
  if (is("cut") || is("cuthang")) {
    write(report, bytes.substr(0, bytes.size() / 2));
    if (is("cuthang")) hang();
    std::abort();
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
  if (is("child") && ::fork() == 0) hang();
  write(report, bytes);
}

}  // namespace

int main(int count, char** words) {
  const char* asked = std::getenv("STAND_IN");
  behaviour = asked != nullptr ? asked : "good";
  const std::vector<std::string> arguments(words + 1, words + count);
  if (arguments.size() == 2 && arguments[0] == "-d") {
    if (is("noversion")) return 0;
    if (is("versionhang")) hang();
    write(arguments[1], versionReport());
    return 0;
  }
  const std::size_t first = isOld() ? 1 : 0;
  if (arguments.size() != first + 2 || (isOld() && arguments[0] != "-t")) return 3;
  compile(arguments[first], arguments[first + 1]);
  return isBad() ? 1 : 0;
}
