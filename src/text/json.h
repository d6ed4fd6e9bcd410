// Text in JSON.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "text/number.h"

namespace ostrand {

// A JSON string of a text in UTF-8, with its quotes. CR LF becomes "\n", control characters are
// escaped.
std::string JsonString(std::string_view utf8);

// Writes JSON step by step, and puts the commas. Every text is in UTF-8.
class JsonWriter {
 public:
  enum class Layout { kLines, kOneLine };  // of the values in an object or array

  // Values in an object follow their key.
  JsonWriter& Key(std::string_view name);
  JsonWriter& Text(std::string_view utf8) { return value(JsonString(utf8)); }
  JsonWriter& Number(int number) { return value(NumberText(number)); }
  // In the shortest digits that give the number again. Infinities and NaN have no JSON number and
  // become null.
  JsonWriter& Number(float number);
  JsonWriter& Number(double number);
  JsonWriter& Bool(bool on) { return value(on ? "true" : "false"); }
  JsonWriter& Null() { return value("null"); }
  // What is in a container of one line is on that line, too.
  JsonWriter& BeginObject(Layout layout = Layout::kLines) { return begin('{', '}', layout); }
  JsonWriter& BeginArray(Layout layout = Layout::kLines) { return begin('[', ']', layout); }
  // Ends the last object or array begun.
  JsonWriter& End();

  // What has been written, with a line feed at its end.
  [[nodiscard]] std::string Take();

 private:
  struct Open {
    char end;
    bool onLines;
    bool empty;
  };

  JsonWriter& begin(char start, char end, Layout layout);
  JsonWriter& value(std::string_view text);
  void startValue();
  void startLine();

  std::string text_;
  std::vector<Open> open_;
  bool afterKey_ = false;
};

}  // namespace ostrand
