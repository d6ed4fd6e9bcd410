// Pick lists from arbitrary bytes, for libFuzzer: a list that can be read survives writing and
// reading, and the check reports a fault in a list that can't be read.
#include <cstdint>
#include <cstdlib>

#include "can/pick_list.h"
#include "can/pick_list_report.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace ostrand;
  if (size == 0) return 0;
  const char* name = (data[0] & 1) != 0 ? "a.11LST" : "a.29PCK";
  const std::string_view content(reinterpret_cast<const char*>(data) + 1, size - 1);
  const auto list = CanListOf(name, content);
  const auto findings = CheckCanListContent(name, content);
  if (!list) {
    bool wrong = false;
    for (const CanListFinding& finding : findings) wrong = wrong || finding.Wrong;
    if (!wrong || list.ErrorText().empty()) std::abort();
    return 0;
  }
  const std::string written = CanListContent(list.Value());
  const auto again = CanListOf(name, written);
  if (!again || CanListContent(again.Value()) != written) std::abort();
  // A listing contains everything in a list except the form of the identifiers.
  if (CanListListing(name, again.Value()) != CanListListing(name, list.Value())) std::abort();
  return 0;
}
