// Formulas from arbitrary bytes, for libFuzzer: the formula test shows a box if and only if it
// rejects, and an accepted formula has one equal sign and matching parentheses.
#include <algorithm>
#include <cstdint>
#include <cstdlib>

#include "calc/formula.h"

namespace {

void require(bool holds) {
  if (!holds) std::abort();
}

class CountingForms : public ostrand::platform::Forms {
 public:
  ostrand::platform::Answer ShowBox(const ostrand::platform::MessageBox& box) override {
    require(box.title == "FORMULA PROBLEM" && box.text.starts_with("FORMULA REJECTED\r\n\r\n"));
    ++boxes;
    return ostrand::platform::Answer::kOk;
  }
  std::optional<std::string> AskOpen(const ostrand::platform::FileDialog&) override { return {}; }
  std::optional<std::string> AskSave(const ostrand::platform::FileDialog&) override { return {}; }
  void SetHelpLine(const std::string&) override {}
  void SetPointer(ostrand::platform::Pointer) override {}
  void Beep() override {}
  void DoEvents() override {}

  int boxes = 0;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace ostrand;
  const std::string_view formula(reinterpret_cast<const char*>(data), size);
  CountingForms forms;
  bool ok = false;
  TestFormula(forms, formula, ok);
  require(forms.boxes == (ok ? 0 : 1));
  const auto count = [&](char letter) {
    return std::count(formula.begin(), formula.end(), letter);
  };
  const bool even = count('(') == count(')') && count('=') == 1;
  if (ok) require(even);
  if (count('(') == 0) require(ok == even);
  // Case makes no difference.
  std::string other(formula);
  for (char& letter : other) {
    if ((letter >= 'a' && letter <= 'z') || (letter >= 'A' && letter <= 'Z')) {
      letter = static_cast<char>(letter ^ 0x20);
    }
  }
  require(FormulaMistakes(other).empty() == ok);
  return 0;
}
