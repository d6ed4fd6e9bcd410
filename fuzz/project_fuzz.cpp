// Project files out of arbitrary bytes, and with extreme values in the place of their own, for
// libFuzzer: whatever a file holds, all that is made from a project is made.
#include <cstdint>

#include "support/extreme_project.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  // A file begins with a letter or a bracket; a byte of a low value chooses a project to edit.
  const bool isEdit = size > 0 && data[0] < ' ';
  ostrand::testing::MakeEverything(isEdit ? ostrand::testing::ExtremeProjectText(bytes)
                                          : std::string(bytes));
  return 0;
}
