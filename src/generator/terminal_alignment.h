// The alignment of differential and single-ended channels on the shared terminals.
#pragma once

#include <string_view>

#include "model/channels.h"

namespace ostrand {

// Terminals that repetitions of this type take.
inline int TerminalsOf(std::string_view measType, int reps) {
  return IsSingleEnded(measType) ? reps : 2 * reps;
}

// The next differential channel behind `cursor` terminals. Behind single-ended ones a half used
// pair is skipped, which moves the cursor.
inline int NextDifferential(int& cursor, bool behindSingleEnded) {
  if (behindSingleEnded && cursor % 2 != 0) ++cursor;
  return (cursor + 2) / 2;
}

// The next single-ended channel behind `cursor` terminals; behind differential ones it is the
// first of a pair.
inline int NextSingleEnded(int cursor, bool behindDifferential) {
  const int channel = cursor + 1;
  return behindDifferential && channel % 2 == 0 ? channel + 1 : channel;
}

}  // namespace ostrand
