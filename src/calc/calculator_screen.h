// What the screens of the calculators share.
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

// What the list of calculators asks of one, and gets back.
struct CalculatorRequest {
  InputAxis axis;        // of the two-point calculators
  bool inVolts = false;  // of a bridge: volts per volt
  std::optional<ScalingAnswer> answer = {};
};

// A calculator works on a copy of its record, which takes the place of the record at Done. Its
// answers follow each key.
class Calculator : public Screen {
 public:
  // What it hands back; nothing before Done, and when it shows no number.
  [[nodiscard]] const std::optional<ScalingAnswer>& Answer() const { return answer_; }
  // Done hands the answer to the request as well, which outlives the screen.
  void AnswerTo(CalculatorRequest& request) { request_ = &request; }

 protected:
  // `helpLine` outlives the screen.
  Calculator(const ScreenContext& context, std::string_view name, std::string_view helpLine);

  bool onDone() override;

  // Shows the answers to what the controls hold now.
  virtual void solve() = 0;
  // The same, and shows in the help line when the multiplier has come out as 0, as one too small
  // for its form does.
  void show();
  // What is shown now is what stays while the inputs have no answer.
  virtual void settle() {}
  [[nodiscard]] virtual std::optional<ScalingAnswer> answerShown() const = 0;
  virtual void writeRecord() = 0;
  // Whether the user accepts it.
  virtual bool mayEnd() { return true; }

  // The controls show members of the copy and write each edit into it. A member that nobody edits
  // stays as the project has it.
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

// Sets a member that is a switch, unless it means the same already.
inline void SetSwitch(i16& member, bool on) {
  if ((member != 0) != on) member = on ? 1 : 0;
}

// Answers that stay as they are while the inputs have none. What stays is the answer to the last
// complete inputs, not to those that a number passed through as it was typed.
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

// A calculator of the multiplier for pulses per second, with a try-out of a rate.
class RateCalculator : public Calculator {
 public:
  TextField WhatIf;  // pulses per second
  Label Multiplier;
  Label Units;
  Label Result;  // of the rate

 protected:
  // `result` names what the try-out gives: "RPM".
  RateCalculator(const ScreenContext& context, std::string_view name, std::string_view helpLine,
                 std::string_view result);

  void solve() override;
  void settle() override { kept_.Settle(); }
  [[nodiscard]] std::optional<ScalingAnswer> answerShown() const override;

  [[nodiscard]] virtual std::optional<RateAnswers> rates() const = 0;
  [[nodiscard]] virtual std::string_view rateUnits() const = 0;

 private:
  // The units belong to the multiplier: where that stays, they stay.
  struct Shown {
    RateAnswers rates;
    std::string units;
  };
  KeptAnswers<Shown> kept_;
};

}  // namespace ostrand
