// The words of the Tessel language.
#pragma once

#include <string_view>

namespace ostrand {

// Whether the language itself knows a word, given in upper case: an instruction, a function, an
// operator or a predefined constant.
bool IsLanguageWord(std::string_view upperWord);

// Whether a name, given in upper case, is that of a table which every logger keeps of itself.
bool IsLoggerTable(std::string_view upperName);

}  // namespace ostrand
