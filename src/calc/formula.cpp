#include "calc/formula.h"

#include <algorithm>

#include "text/letters.h"
#include "text/number.h"
#include "text/strings.h"

namespace ostrand {
namespace {

constexpr std::string_view kParagraph = "\r\n\r\n";

// After one of these a "(" groups.
constexpr std::string_view kDelimiters = "(*\\/+-=";

// A collected text up to this length counts as one name.
constexpr std::size_t kShortText = 3;

// Number of characters of a name that are compared.
constexpr std::size_t kComparedLength = 7;

constexpr std::string_view kValidNames[] = {
    "TK40REF", "FRAC",  "MOD",   "ABS",   "ATN",   "COS",   "FIX",   "INT",   "LOG",   "SGN",
    "SIN",     "SQR",   "TAN",   "IIF",   "VBLK1", "VBLK2", "VBLK3", "VBLK4", "VBLK5", "VBLK6",
    "VBLK7",   "TBLK1", "TBLK2", "TBLK3", "TBLK4", "TBLK5", "TBLK6", "TBLK7", "BBLK1", "BBLK2",
    "BBLK3",   "BBLK4", "BBLK5", "BBLK6", "BBLK7", "PBLK1", "PBLK2", "PBLK3", "PBLK4", "PBLK5",
    "PBLK6",   "PBLK7", "ABLK1", "ABLK2", "ABLK3", "ABLK4", "ABLK5", "ABLK6", "ABLK7", "ACOS",
    "ASIN",    "ATN2",  "COSH",  "CSGN",  "EXP",   "LOG10", "SINH",  "TANH"};

// The name directly before a "(", in a text without blanks.
std::string_view nameAtEnd(std::string_view collected) {
  if (collected.size() <= kShortText) return collected;
  const std::size_t delimiter = collected.find_last_of(kDelimiters);
  return delimiter == std::string_view::npos ? collected : collected.substr(delimiter + 1);
}

bool isGrouping(std::string_view name) {
  return name.empty() || kDelimiters.find(name.back()) != std::string_view::npos;
}

bool isValidName(std::string_view name) {
  const std::string known = Upper(name.substr(0, kComparedLength));
  return known.starts_with("CAN") ||
         std::find(std::begin(kValidNames), std::end(kValidNames), known) != std::end(kValidNames);
}

std::string namesMistakes(std::string_view formula) {
  std::string mistakes;
  std::string collected;
  for (const char letter : Trim(formula)) {
    if (letter == ' ') continue;
    if (letter == '(') {
      const std::string_view name = nameAtEnd(collected);
      if (!isGrouping(name) && !isValidName(name)) {
        mistakes += '"' + std::string(name) + "\" is not a valid function name.";
        mistakes += kParagraph;
      }
    }
    collected += letter;
  }
  return mistakes;
}

std::string parens(std::ptrdiff_t count, std::string_view side) {
  return NumberText(static_cast<std::int64_t>(count)) + " " + std::string(side) + " parens";
}

std::string countMistakes(std::string_view formula) {
  const auto count = [&](char letter) {
    return std::count(formula.begin(), formula.end(), letter);
  };
  const auto left = count('(');
  const auto right = count(')');
  const auto equals = count('=');
  std::string mistakes;
  const auto add = [&](const std::string& text) { mistakes.append(text).append(kParagraph); };
  if (left > right) {
    add("There are " + parens(left, "left") + " and " + parens(right, "right") + ".");
  } else if (right > left) {
    add("There are " + parens(right, "right") + " and " + parens(left, "left") + ".");
  }
  if (equals == 0) {
    add("There is no equal sign in the formula.");
  } else if (equals > 1) {
    add("There are " + NumberText(static_cast<std::int64_t>(equals)) +
        " equal signs in the formula.");
  }
  return mistakes;
}

std::string call(const std::string& function, const std::string& argument) {
  return function.empty() ? argument : function + "(" + argument + ")";
}

}  // namespace

std::string ComposeFormula(const FormulaParts& parts) {
  std::string text = call(parts.function1, parts.measure1);
  if (parts.measure1.empty()) {
    text.clear();
  } else {
    if (!parts.measure2.empty()) {
      const std::string sign = parts.compare == "x" ? "*" : parts.compare;
      text = "(" + text + " " + sign + " " + call(parts.function2, parts.measure2) + ")";
    }
    text = call(parts.function3, text);
  }
  if (!parts.multiplier.empty()) text += " * " + parts.multiplier;
  if (!parts.offset.empty()) text += " + " + parts.offset;
  return parts.name + " = " + text;
}

std::string FormulaMistakes(std::string_view formula) {
  const std::string mistakes = countMistakes(formula) + namesMistakes(formula);
  if (mistakes.empty()) return {};
  return "FORMULA REJECTED" + std::string(kParagraph) + mistakes;
}

void TestFormula(platform::Forms& forms, std::string_view formula, bool& ok) {
  const std::string mistakes = FormulaMistakes(formula);
  ok = mistakes.empty();
  if (ok) return;
  platform::MessageBox box;
  box.title = "FORMULA PROBLEM";
  box.text = mistakes;
  box.icon = platform::Icon::kStop;
  forms.ShowBox(box);
}

bool IsNameLetter(char letter) { return IsLetter(letter) || IsDigit(letter) || letter == '_'; }

bool IsVariableName(std::string_view name) {
  return !name.empty() && IsLetter(name.front()) &&
         std::all_of(name.begin(), name.end(), IsNameLetter);
}

}  // namespace ostrand
