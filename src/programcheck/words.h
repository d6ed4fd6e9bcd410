// The words of the Tessel language.
#pragma once

#include <string_view>

namespace ostrand {

// Whether a word, in upper case, belongs to the language: an instruction, a function, an operator
// or a predefined constant.
bool IsLanguageWord(std::string_view upperWord);

// Whether a name, in upper case, is that of a table that every logger has.
bool IsLoggerTable(std::string_view upperName);

}  // namespace ostrand
