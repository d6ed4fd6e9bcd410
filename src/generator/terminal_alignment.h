// The alignment of differential and single-ended channels on the shared terminals.
#pragma once

#include <string_view>

#include "model/channels.h"

namespace ostrand {

// Terminals that `reps` repetitions of this type take.
inline int TerminalsOf(std::string_view measType, int reps) {
  return IsSingleEnded(measType) ? reps : 2 * reps;
}

// The next differential channel after `cursor` terminals. After single-ended ones a half-used pair
// is skipped, which moves the cursor.
inline int NextDifferential(int& cursor, bool afterSingleEnded) {
  if (afterSingleEnded && cursor % 2 != 0) ++cursor;
  return (cursor + 2) / 2;
}

// The next single-ended channel after `cursor` terminals; after differential ones it is the first
// of a pair.
inline int NextSingleEnded(int cursor, bool afterDifferential) {
  const int channel = cursor + 1;
  return afterDifferential && channel % 2 == 0 ? channel + 1 : channel;
}

}  // namespace ostrand
