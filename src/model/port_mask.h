// Masks of the control ports in the program.
#pragma once

#include <string>
#include <string_view>

namespace ostrand {

// The bits "00001111", the last one for port 1, as "&B00001111", "&HF" or "15": for the code types
// "BIN", "HEX" (case-insensitive) and any other.
std::string PortMaskText(std::string_view bits, std::string_view codeType);

}  // namespace ostrand
