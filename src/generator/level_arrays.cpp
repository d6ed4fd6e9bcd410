#include "generator/level_arrays.h"

#include <string>

#include "text/number.h"

namespace ostrand {
namespace {

template <class Values>
std::string dataLine(const Values& values, int count) {
  std::string text = "Data ";
  for (int i = 0; i < count; ++i) {
    if (i > 0) text += ',';
    text += NumberText(values[i]);
  }
  return text;
}

}  // namespace

void PutLevelArrays(ProgramRun& run, const OutputSet& output, int t, std::string_view array,
                    std::string_view label, std::string_view secondDataComment) {
  const HistoSet& level = output.Histo[t];
  run.needs.NeedLoopIndex = true;
  const auto putArray = [&](int dimension, int levels) {
    const auto put = [&](const auto&... statement) {
      run.Put({statement...}, {label, " level crossing array ", dimension});
    };
    LevelArrayStatement(put, array, dimension, levels);
  };
  putArray(1, level.LevNumLevels);
  run.Put({dataLine(level.LevelVarOne, level.LevNumLevels)}, {label, " data for array 1"},
          Pad::kGuarded);
  const bool second = level.NumDims == 1;
  putArray(2, second ? level.LevNumTests : 1);
  if (!second) return;
  const std::string data = dataLine(level.LevelVarTwo, level.LevNumTests);
  if (static_cast<int>(data.size()) < kCommentColumn) {
    run.Put({data}, {label, " data for array 2"});
  } else {
    run.Put({data}, {secondDataComment}, Pad::kGuarded);
  }
}

}  // namespace ostrand
