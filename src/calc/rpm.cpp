#include "calc/rpm.h"

namespace ostrand {

std::optional<RateAnswers> SolveRpm(const RpmCalcRecord& record) {
  return RateAnswersOf(1 / TypedNumber(record.Pulses) * 60, "###0.0#####", record.WhatIf,
                       "###0.0##");
}

}  // namespace ostrand
