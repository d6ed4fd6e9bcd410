// Reads rich text like a word processor, but only the parts that our documents use.
#pragma once

#include <gtest/gtest.h>

#include <cctype>
#include <string>
#include <string_view>

#include "text/codepage.h"

namespace ostrand::testing {

class RtfReader {
 public:
  explicit RtfReader(std::string_view rtf) : rest_(rtf) {
    while (!rest_.empty()) next();
    EXPECT_EQ(depth_, 0) << "groups that are not closed";
  }

  std::string text;        // in UTF-8, lines end in LF
  std::string underlined;  // its underlined characters
  std::string coloured;    // its characters in another colour than the first

 private:
  char take() {
    const char c = rest_.empty() ? '\0' : rest_.front();
    rest_.remove_prefix(rest_.empty() ? 0 : 1);
    EXPECT_TRUE(c == '\r' || c == '\n' || (c >= ' ' && c < '\x7F')) << "not ASCII: " << int{c};
    return c;
  }
  void put(char32_t c) {
    if (depth_ != 1) return;
    AppendUtf8(text, c);
    if (underline_) AppendUtf8(underlined, c);
    if (colour_) AppendUtf8(coloured, c);
  }
  char hexByte() {
    const std::string digits = {take(), take()};
    return static_cast<char>(std::stoi(digits, nullptr, 16));
  }
  void next() {
    const char c = take();
    if (c == '{' || c == '}') {
      depth_ += c == '{' ? 1 : -1;
    } else if (c == '\\') {
      control();
    } else if (c != '\r' && c != '\n') {
      put(static_cast<unsigned char>(c));
    }
  }
  void control() {
    if (rest_.starts_with("\\") || rest_.starts_with("{") || rest_.starts_with("}")) {
      put(static_cast<unsigned char>(take()));
    } else if (rest_.starts_with("'")) {
      take();
      put(CharacterOf(hexByte()));
    } else {
      word();
    }
  }
  void word() {
    std::string name;
    std::string number;
    while (std::isalpha(static_cast<unsigned char>(rest_.front())) != 0) name += take();
    while (std::isdigit(static_cast<unsigned char>(rest_.front())) != 0) number += take();
    if (rest_.starts_with(" ")) take();
    if (name == "par") text += '\n';
    if (name == "ul") underline_ = true;
    if (name == "ulnone") underline_ = false;
    if (name == "cf") colour_ = number != "0";
    if (name != "u") return;
    put(static_cast<char32_t>(std::stoi(number)));
    if (!rest_.starts_with("\\")) {  // the fallback is skipped
      take();
    } else {
      rest_.remove_prefix(2);
      hexByte();
    }
  }

  std::string_view rest_;
  int depth_ = 0;
  bool underline_ = false;
  bool colour_ = false;
};

}  // namespace ostrand::testing
