#include "generator/program_run.h"

#include "text/number.h"
#include "text/strings.h"

namespace ostrand {
namespace {

constexpr std::string_view kHarrier = "Harrier";

// Fill characters on each side of a title in a line of 64.
int barWidth(std::string_view title, int less = 0) {
  return static_cast<int>(RoundHalfEven((64 - static_cast<int>(title.size()) - less) / 2.0));
}

}  // namespace

void ProgramRun::Start() {
  lines.Clear();
  needs = {};
  zero = {};
  channels = {};
  blocks_ = {};
}

const std::vector<BlockView>& ProgramRun::Blocks(Family family) {
  std::optional<std::vector<BlockView>>& blocks = blocks_[static_cast<std::size_t>(family)];
  if (!blocks) blocks = BlocksOf(store, needs.Except, family);
  return *blocks;
}

void ProgramRun::PutSectionTitle(std::string_view title, std::string_view indent) {
  const int width = barWidth(title);
  Put({indent, "'", Fill{'\\', width}, title, Fill{'/', width}});
}

void ProgramRun::PutTitle(std::string_view indent, std::string_view title, char fill, int less) {
  const Fill bar{fill, barWidth(title, less)};
  Put({indent, "'", bar, title, bar});
}

void ProgramRun::PutBodyTitle(Family family) {
  if (AnyReps(Blocks(family))) PutTitle("      ", TextsOf(family).bodyTitle);
}

bool ProgramRun::HostIsHarrier() const { return SameText(HostApp, kHarrier); }

bool ProgramRun::NeedsFieldCal() const {
  return (HostIsHarrier() && needs.AnySiteCal) || needs.AnyZeroCal || needs.StrainCalMask != 0;
}

}  // namespace ostrand
