// Formulas of calculated fields as texts: how they are put together and what is tested.
#pragma once

#include <array>
#include <string>
#include <string_view>

#include "platform/forms.h"

namespace ostrand {

// The entry of a list that stands for nothing picked.
inline constexpr std::string_view kNoChoice = " None";

inline constexpr std::array<std::string_view, 20> kFormulaFunctions = {
    kNoChoice, "Abs", "Acos", "Asin",  "Atn", "Cos", "Cosh", "Csgn", "Exp", "Fix",
    "Frac",    "Int", "Log",  "Log10", "Sgn", "Sin", "Sinh", "Sqr",  "Tan", "Tanh"};

inline constexpr std::array<std::string_view, 5> kFormulaOperators = {"+", "-", "x", "/", "^"};

// What is picked for a formula; an empty text for nothing.
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

// What is wrong with a formula, as the box tells it; empty for one that passes. A name behind which
// no "(" stands is not looked at.
std::string FormulaMistakes(std::string_view formula);

// Shows what is wrong in the box "FORMULA PROBLEM"; `ok` becomes whether nothing is.
void TestFormula(platform::Forms& forms, std::string_view formula, bool& ok);

// Letters, digits and "_".
bool IsNameLetter(char letter);

// A letter, then letters, digits and "_".
bool IsVariableName(std::string_view name);

}  // namespace ostrand
