// Formulas of calculated fields as texts: building and checking them.
#pragma once

#include <array>
#include <string>
#include <string_view>

#include "platform/forms.h"

namespace ostrand {

// The list entry for no selection.
inline constexpr std::string_view kNoChoice = " None";

inline constexpr std::array<std::string_view, 20> kFormulaFunctions = {
    kNoChoice, "Abs", "Acos", "Asin",  "Atn", "Cos", "Cosh", "Csgn", "Exp", "Fix",
    "Frac",    "Int", "Log",  "Log10", "Sgn", "Sin", "Sinh", "Sqr",  "Tan", "Tanh"};

inline constexpr std::array<std::string_view, 5> kFormulaOperators = {"+", "-", "x", "/", "^"};

// The selections for a formula; an empty text for none.
struct FormulaParts {
  std::string name;
  std::string measure1, function1;
  std::string compare;  // the operator between the measures, "x" to multiply
  std::string measure2, function2;
  std::string function3;  // around both
  std::string multiplier, offset;
};

// "Flow = Sqr((VBlk1(1) - Abs(VBlk1(2)))) * 2 + -5". A second measure without a first is left out.
std::string ComposeFormula(const FormulaParts& parts);

// The faults of a formula, as the box lists them; empty for a valid one. Names without a following
// "(" are not checked.
std::string FormulaMistakes(std::string_view formula);

// Lists the faults in the box "FORMULA PROBLEM"; sets `ok` when there are none.
void TestFormula(platform::Forms& forms, std::string_view formula, bool& ok);

// Letters, digits and "_".
bool IsNameLetter(char letter);

// A letter, then letters, digits and "_".
bool IsVariableName(std::string_view name);

}  // namespace ostrand
