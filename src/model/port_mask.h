// Masks of the control ports as the program has them.
#pragma once

#include <string>
#include <string_view>

namespace ostrand {

// The bits "00001111", the last one being port 1, as "&B00001111", "&HF" or "15": for the code
// types "BIN", "HEX" and any other, in any case.
std::string PortMaskText(std::string_view bits, std::string_view codeType);

}  // namespace ostrand
