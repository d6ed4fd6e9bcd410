// The sensors of a bridge block, their channels and their excitation.
#include <algorithm>
#include <string>

#include "blocks/bridge_rules.h"
#include "blocks/frm_brdg_setup.h"
#include "conditions/field_keys.h"
#include "platform/box.h"
#include "text/number.h"
#include "text/strings.h"

namespace ostrand {
namespace {

constexpr int kMaxExciteReps = 32767;  // of the member

}  // namespace

void frmBrdgSetup::bindCounts() {
  Reps.MayBeBlank = true;
  Reps.WholePart = true;
  Reps.OnTake = [this] { onReps(); };
  Reps.OnSpin = [this](bool up) {
    const i16 before = data().Reps;  // what was typed has taken effect
    fitReps(before + (up ? 1 : -1));
    if (data().Reps == before) Forms().Beep();
  };
  Reps.WhyChanged = [this] {
    return "the channels or excitations are free for " + NumberText(data().Reps) + " only";
  };
  StartBrdgChan.OnTake = [this] { takeStart(); };
  StartBrdgChan.OnSpin = [this](bool up) {
    StartBrdgChan.Value(StartBrdgChan.Value() + (up ? 1 : -1));
    takeStart();
  };
  ExciteReps.MayBeBlank = true;
  ExciteReps.WholePart = true;
  ExciteReps.OnChange = [this] {
    LimitWhileTyped(ExciteReps, 1, kMaxExciteReps);
    if (ExciteReps.Text() == "0") ExciteReps.Correct("1");
  };
  ExciteReps.OnTake = [this] { onExciteReps(); };
  ExciteReps.OnSpin = [this](bool up) {
    const i32 shown = std::clamp(WholePart(ExciteReps), 1, kMaxExciteReps);
    ExciteReps.Value(shown + (up ? 1 : -1));
    onExciteReps();
  };
  FieldNames.OnPress = [this] { openFieldNames(scaling()); };
}

void frmBrdgSetup::bindExcitation() {
  Excite.WholePart = true;
  Excite.OnChange = [this] { onExciteTyped(); };
  Excite.OnTake = [this] {
    Excite.Value(std::max(Excite.Value(), double{kMinExcite}));
    data().Excite = static_cast<float>(Excite.Value());
  };
  Excite.OnSpin = [this](bool up) {
    constexpr i32 kStep = 10;
    Excite.Value(std::clamp(WholePart(Excite) + (up ? kStep : -kStep), kMinExcite, kMaxExcite));
    data().Excite = static_cast<float>(Excite.Value());
  };
  bindFlag(CheckCAO, &BridgeBlockData::CheckCAO, [this] { recount(); });
  bindFlag(RevExcite, &BridgeBlockData::RevExcite, [this] { showTimes(); });
  bindFlag(ReverseMes, &BridgeBlockData::ReverseMes, [this] { showTimes(); });
  bindFlag(RevOutput, &BridgeBlockData::RevOutput, [] {});
}

void frmBrdgSetup::showStart() {
  const int found = autoChan() ? list_.Starts(list_.Bridges()).Bridge[block_] : 0;
  StartBrdgChan.Value(found > 0 ? found : data().StartChan);
}

void frmBrdgSetup::onReps() {
  if (Trim(Reps.Text()).empty()) return;
  fitReps(WholePart(Reps));
}

// Sets a sensor count, limited by excitations and channels.
void frmBrdgSetup::fitReps(int reps) {
  BridgeBlockData& block = data();
  int fitting = std::clamp(reps, 0, kReps);
  if (!autoChan()) {
    fitting = std::clamp(fitting, 0, std::max(ChannelsFrom(differential(), block.StartChan), 0));
  }
  block.Reps = static_cast<i16>(fitting);
  fitExciteReps();  // also leaves no sensors when other blocks use all excitations
  while (autoChan() && block.Reps > 0 && list_.FreeChannels() < 0) {
    const ChannelBlock own = list_.Bridges()[static_cast<std::size_t>(block_ - 1)];
    const int tooMany = BridgeSensorsTooMany(-list_.FreeChannels(), own);
    block.Reps = static_cast<i16>(std::max(block.Reps - tooMany, 0));
    recount();
  }
  Reps.Value(block.Reps);
  warnWhenEmptied(reps);
}

void frmBrdgSetup::onExciteReps() {
  const int before = data().Reps;
  fitExciteReps();
  warnWhenEmptied(before);
}

void frmBrdgSetup::fitExciteReps() {
  BridgeBlockData& block = data();
  const int wanted = std::clamp(WholePart(ExciteReps), 1, kMaxExciteReps);
  const ExciteFit fit =
      FitExciteReps(block.Reps, wanted, ExcitePortsOfOthers(list_.Bridges(), block_));
  block.Reps = static_cast<i16>(fit.reps);
  block.ExciteReps = static_cast<i16>(fit.exciteReps);
  Reps.Value(fit.reps);
  ExciteReps.Value(fit.exciteReps);
  if (fit.exciteReps != wanted) ShowWarning(Forms(), "CORRECTION", "MeasPerEx has been Changed");
  recount();
}

void frmBrdgSetup::recount() {
  BrdSetup_DiffSECount();
  if (!IsLoading()) limitExciteReps();
  list_.BrdBlock_ExcitCount();
  FreeExcite.Text(list_.FreeExcite.Text());
  list_.List.RefreshRows();
  if (autoChan() || IsLoading()) showStart();
  FieldNames.Enable(data().Reps > 0, kNoSensors);
  showTimes();
}

void frmBrdgSetup::BrdSetup_DiffSECount() {
  list_.BrdBlock_DiffSECount();
  FreeSE.Text(list_.FreeSE.Text());
  FreeDiff.Text(list_.FreeDiff.Text());
}

void frmBrdgSetup::limitExciteReps() {
  BridgeBlockData& block = data();
  if (block.Reps <= 0 || block.ExciteReps <= block.Reps) return;
  block.ExciteReps = block.Reps;
  ExciteReps.Value(block.ExciteReps);
  Forms().Beep();
  ShowWarning(Forms(), "TROUBLE",
              "The excitation repeat value (MeasPerEx) is too large for the number\r\n"
              "of available channels, and has been reduced.");
}

void frmBrdgSetup::warnWhenEmptied(int before) {
  if (before < 1 || data().Reps > 0) return;
  Forms().SetHelpLine("WARNING - Sensor count has been set to zero.");
}

void frmBrdgSetup::takeStart() {
  const int start = std::max(WholePart(StartBrdgChan), 1);
  data().StartChan =
      static_cast<i16>(std::min(start, LastBridgeStart(differential(), data().Reps)));
  StartBrdgChan.Value(data().StartChan);
}

void frmBrdgSetup::onExciteTyped() {
  DropLeadingZeros(Excite);
  std::string text = Excite.Text();
  if (text.find('-', 1) != std::string::npos) {
    text.erase(std::remove(text.begin() + 1, text.end(), '-'), text.end());
    Excite.Correct(text);
    Forms().Beep();
  }
  LimitWhileTyped(Excite, -kMaxExcite, kMaxExcite);
}

}  // namespace ostrand
