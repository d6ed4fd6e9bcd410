// Project files from arbitrary bytes, and projects edited to extreme values, for libFuzzer: all
// files are made from any project without a crash.
#include <cstdint>

#include "support/extreme_project.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  // A file begins with a letter or a bracket; a lower first byte selects a project to edit.
  const bool isEdit = size > 0 && data[0] < ' ';
  ostrand::testing::MakeEverything(isEdit ? ostrand::testing::ExtremeProjectText(bytes)
                                          : std::string(bytes));
  return 0;
}
