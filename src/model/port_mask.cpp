#include "model/port_mask.h"

#include "text/number.h"
#include "text/strings.h"

namespace ostrand {

std::string PortMaskText(std::string_view bits, std::string_view codeType) {
  if (SameText(codeType, "BIN")) return "&B" + std::string(bits);
  std::uint64_t value = 0;
  for (const char bit : bits) value = value * 2 + (bit == '1' ? 1U : 0U);
  if (SameText(codeType, "HEX")) return "&H" + HexText(value);
  return NumberText(static_cast<std::int64_t>(value));
}

}  // namespace ostrand
