// Common part of the calculator screens.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "calc/answers.h"
#include "calc/scaling_answer.h"
#include "calc/source_kinds.h"
#include "controls/choice.h"
#include "controls/screen.h"

namespace ostrand {

// Input and result of a calculator in the list of calculators.
struct CalculatorRequest {
  InputAxis axis;        // of the two-point calculators
  bool inVolts = false;  // of a bridge: volts per volt
  std::optional<ScalingAnswer> answer = {};
};

// A calculator works on a copy of its record and stores it at Done. Its answers follow each key.
class Calculator : public Screen {
 public:
  // The result; nothing before Done, and when the shown answer is not a number.
  [[nodiscard]] const std::optional<ScalingAnswer>& Answer() const { return answer_; }
  // Done also puts the answer into the request, which must outlive the screen.
  void AnswerTo(CalculatorRequest& request) { request_ = &request; }

 protected:
  // `helpLine` must outlive the screen.
  Calculator(const ScreenContext& context, std::string_view name, std::string_view helpLine);

  bool onDone() override;

  // Updates the answers from the controls.
  virtual void solve() = 0;
  // The same, and shows in the help line when the multiplier rounds to 0, because it is too small
  // for its format.
  void show();
  // Keeps the present answers for the time when the inputs have none.
  virtual void settle() {}
  [[nodiscard]] virtual std::optional<ScalingAnswer> answerShown() const = 0;
  virtual void writeRecord() = 0;
  // Whether the user accepts the answer.
  virtual bool mayEnd() { return true; }

  // Bind controls to members of the copy: each edit is written to the member. Unedited members keep
  // the project's value.
  void bind(TextField& field, std::string& member);
  void bindUnits(TextField& field, std::string& member);
  void bindCodes(Choice& choice, i16& member);  // the first item is 1
  void bindSwitch(CheckBox& box, i16& member);
  void solveAndSettle();

 private:
  std::string_view helpLine_;
  bool warned_ = false;
  std::optional<ScalingAnswer> answer_;
  CalculatorRequest* request_ = nullptr;
};

// Sets a boolean member, unless it already means the same.
inline void SetSwitch(i16& member, bool on) {
  if ((member != 0) != on) member = on ? 1 : 0;
}

// Answers that stay while the inputs have none. The last complete inputs count, not the
// intermediate numbers of a key sequence.
template <class Answers>
class KeptAnswers {
 public:
  void Take(std::optional<Answers> answers) { shown_ = answers ? std::move(answers) : settled_; }
  void Settle() { settled_ = shown_; }
  [[nodiscard]] const std::optional<Answers>& Shown() const { return shown_; }
  [[nodiscard]] const std::optional<Answers>& Settled() const { return settled_; }

 private:
  std::optional<Answers> shown_;
  std::optional<Answers> settled_;
};

// A calculator of the multiplier for pulses per second, with a try-out rate.
class RateCalculator : public Calculator {
 public:
  TextField WhatIf;  // pulses per second
  Label Multiplier;
  Label Units;
  Label Result;  // of the rate

 protected:
  // `result` names the result of the try-out: "RPM".
  RateCalculator(const ScreenContext& context, std::string_view name, std::string_view helpLine,
                 std::string_view result);

  void solve() override;
  void settle() override { kept_.Settle(); }
  [[nodiscard]] std::optional<ScalingAnswer> answerShown() const override;

  [[nodiscard]] virtual std::optional<RateAnswers> rates() const = 0;
  [[nodiscard]] virtual std::string_view rateUnits() const = 0;

 private:
  // Units belong to the multiplier: they stay if it stays.
  struct Shown {
    RateAnswers rates;
    std::string units;
  };
  KeptAnswers<Shown> kept_;
};

}  // namespace ostrand
