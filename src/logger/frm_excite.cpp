#include "logger/frm_excite.h"

#include "conditions/condition_row.h"
#include "controls/numeric_field.h"
#include "logger/faces.h"
#include "logger/state_rows.h"
#include "model/channels.h"
#include "platform/box.h"
#include "text/number.h"

namespace ostrand {
namespace {

constexpr int kStatic = 0;  // indexes in the list
constexpr int kDynamic = 1;

ConditionControlNames stateNames(int state, const std::string& channel) {
  const std::string head = "Excite" + NumberText(state);
  return {head + "MeasVar" + channel, head + "Compare" + channel, head + "Value" + channel,
          head + "Expression" + channel};
}

void setToolTips(ConditionControls& row, const std::string& state) {
  row.MeasVar.ToolTip = "Select measurement for State " + state + ".";
  row.Compare.ToolTip = "Select comparator for State " + state + ".";
  row.Value.ToolTip = "Select value for State " + state + ".";
}

StateFields firstOf(ExciteChannel& channel) {
  return {channel.Excite1MeasVar, channel.Excite1Compare, channel.Excite1Value,
          channel.Excite1Expression};
}
StateFields secondOf(ExciteChannel& channel) {
  return {channel.Excite2MeasVar, channel.Excite2Compare, channel.Excite2Value,
          channel.Excite2Expression};
}

i16 millivolts(const NumericField& field) { return static_cast<i16>(field.Value()); }

}  // namespace

struct frmExcite::ChannelControls {
  ChannelControls(Screen& screen, const ConditionVariables& variables, const std::string& channel)
      : Include(screen, "Include" + channel),
        PortMessage(screen, "PortMessage" + channel),
        DynamicStatic(screen, "DynamicStatic" + channel),
        State1(screen, "State1" + channel, NumberType::kInteger),
        State2(screen, "State2" + channel, NumberType::kInteger),
        Condition1(screen, variables, stateNames(1, channel), {}),
        Condition2(screen, variables, stateNames(2, channel), {}),
        FastDelay(screen, "FastDelay" + channel),
        Delay(screen, "Delay" + channel),
        CurrentOut(screen, "CurrentOut" + channel),
        ViewCode(screen, "ViewCode" + channel) {
    Include.Caption = "CAO" + channel;
    DynamicStatic.SetItems({"Static", "Dynamic"});
    Condition1.Describe("CAO" + channel + " conditions", 1);
    Condition2.Describe("CAO" + channel + " conditions", 2);
    setToolTips(Condition1, "1");
    setToolTips(Condition2, "2");
    Delay.ToolTip = "The time in uSecs to pause after setting this channel's value.";
    CurrentOut.SetItems({"15 mAmp Max", "5 mAmp Max"});
  }

  CheckBox Include;
  Label PortMessage;
  Choice DynamicStatic;
  NumericField State1;
  NumericField State2;
  ConditionControls Condition1;
  ConditionControls Condition2;
  CheckBox FastDelay;
  Label Delay;
  Choice CurrentOut;
  Button ViewCode;
};

frmExcite::frmExcite(const ScreenContext& context)
    : Screen(context, "frmExcite"),
      Purpose(*this, "Purpose"),
      ExcitePublic(*this, "ExcitePublic"),
      variables_(context.store, context.UserVarListTypes),
      before_(context.store.ExciteOut) {
  Caption = "CONTINUOUS ANALOG OUTPUTS";
  Purpose.Text(
      "This window is used to set the CAO channels to a constant (Static) value or conditionally "
      "(Dynamic) to one of two different values. This is primarily used in the Static mode to "
      "provide excitation to sensors when it is not practical to use one of the bridge methods "
      "provided by the Program Generator.");
  ExcitePublic.OnClick = [this] {
    if (!IsLoading()) store().ExciteOut.ExcitePublic = ExcitePublic.Checked() ? kTrue : kFalse;
  };
  for (int port = 1; port <= kChannels; ++port) {
    channels_[port] = std::make_unique<ChannelControls>(*this, variables_, NumberText(port));
    bind(port);
    bindStates(port);
    UpdateChannelStates(port);
  }
  Describe(*this, kExciteFaces);
  const Loading loading(*this);
  ExcitePublic.Check(store().ExciteOut.ExcitePublic != kFalse);
}

frmExcite::~frmExcite() = default;

void frmExcite::bind(int port) {
  ChannelControls& controls = at(port);
  const auto onClick = [this, port](auto&& take) {
    return [this, port, take] {
      if (IsLoading()) return;
      take(stored(port), at(port));
      refresh(port);
    };
  };
  controls.Include.OnClick = onClick([](ExciteChannel& channel, ChannelControls& from) {
    channel.Include = from.Include.Checked() ? kTrue : kFalse;
  });
  controls.DynamicStatic.OnPick = onClick([](ExciteChannel& channel, ChannelControls& from) {
    channel.DynamicStatic = from.DynamicStatic.Index() == kStatic ? 1 : 0;
  });
  controls.FastDelay.OnClick = onClick([](ExciteChannel& channel, ChannelControls& from) {
    channel.FastDelay = from.FastDelay.Checked() ? 1 : 0;
  });
  controls.CurrentOut.OnPick = onClick([](ExciteChannel& channel, ChannelControls& from) {
    channel.CurrentOut = from.CurrentOut.Index() == 1 ? 1 : 0;
  });
  controls.ViewCode.OnPress = [this, port] { ShowCode(Forms(), "EXCITATION CODE", codeOf(port)); };
}

void frmExcite::bindStates(int port) {
  ChannelControls& controls = at(port);
  controls.State1.OnTake = [this, port] { stored(port).State1 = millivolts(at(port).State1); };
  controls.State2.OnTake = [this, port] { stored(port).State2 = millivolts(at(port).State2); };
  for (ConditionControls* row : {&controls.Condition1, &controls.Condition2}) {
    row->OnEdit = [this, port] { takeConditions(port); };
    ReportPickedFlag(*row, Forms(), store());
  }
}

void frmExcite::UpdateChannelStates(int port) {
  const Loading loading(*this);
  ExciteChannel& channel = stored(port);
  ChannelControls& controls = at(port);
  controls.Include.Check(channel.Include != kFalse);
  controls.DynamicStatic.PickAt(channel.DynamicStatic != 0 ? kStatic : kDynamic);
  controls.State1.Value(channel.State1);
  controls.State2.Value(channel.State2);
  LoadState(controls.Condition1, firstOf(channel), kTriggerCompares);
  LoadState(controls.Condition2, secondOf(channel), kTriggerCompares);
  controls.FastDelay.Check(channel.FastDelay != 0);
  controls.CurrentOut.PickAt(channel.CurrentOut != 0 ? 1 : 0);
  refresh(port);
}

void frmExcite::takeConditions(int port) {
  ExciteChannel& channel = stored(port);
  KeepState(at(port).Condition1, firstOf(channel), {});
  KeepState(at(port).Condition2, secondOf(channel), {});
  refresh(port);
}

void frmExcite::refresh(int port) {
  ChannelControls& controls = at(port);
  const std::string number = NumberText(port);
  const bool byBridge =
      CAOPortUsedByBridge(port, CAOPortsTaken(ChannelBlocksOf(store().BridgeBlock)));
  controls.Include.Enabled = !byBridge;
  controls.PortMessage.Text("Port CAO" + number +
                            (byBridge ? " is used by a bridge measurement." : " is free."));
  const bool dynamic = controls.DynamicStatic.Index() == kDynamic;
  controls.State1.ToolTip =
      (dynamic ? "Enter a value for State 1 of channel " : "Enter a value for channel ") + number;
  controls.State2.ToolTip = "Enter a value for State 2 of channel " + number;
  controls.State2.Enabled = dynamic;
  for (ConditionControls* row : {&controls.Condition1, &controls.Condition2}) {
    row->Enable(dynamic, kNeedsDynamic);
  }
  controls.Delay.Text(controls.FastDelay.Checked() ? "300 uSec" : "2.6 mSec");
  controls.ViewCode.Enabled = controls.Include.Checked() && !lacksCondition(port);
}

bool frmExcite::lacksCondition(int port) {
  const ChannelControls& controls = at(port);
  return controls.DynamicStatic.Index() == kDynamic &&
         !(controls.Condition1.Valid() && controls.Condition2.Valid());
}

// As in the program, without its comments.
std::string frmExcite::codeOf(int port) {
  const ExciteChannel& channel = stored(port);
  const std::string number = NumberText(port);
  const std::string tail = std::string(channel.CurrentOut == 0 ? ",True" : ",False") +
                           (channel.FastDelay != 0 ? ",True)" : ",False)");
  const std::string statement = "ExciteCAO(CAO" + number + ",";
  if (channel.DynamicStatic != 0) return statement + NumberText(channel.State1) + tail;
  const std::string variable = "Excite" + number;
  const bool isPublic = store().ExciteOut.ExcitePublic != kFalse;
  return JoinLines({(isPublic ? "Public " : "Dim ") + variable,
                    "If " + channel.Excite1Expression + " Then",
                    "      " + variable + " = " + NumberText(channel.State1),
                    "ElseIf " + channel.Excite2Expression + " Then",
                    "      " + variable + " = " + NumberText(channel.State2), "End If",
                    statement + variable + tail});
}

std::string frmExcite::incomplete() {
  std::string rows;
  for (int port = 1; port <= kChannels; ++port) {
    ChannelControls& controls = at(port);
    if (!controls.Include.Checked() || !lacksCondition(port)) continue;
    if (!rows.empty()) rows += "\r\n";
    rows += "Module Slot 1,  Port " + NumberText(port);
    if (!controls.Condition1.Valid()) rows += ",  State 1";
    if (!controls.Condition2.Valid()) rows += ",  State 2";
  }
  return rows;
}

Control* frmExcite::firstMissing() {
  for (int port = 1; port <= kChannels; ++port) {
    ChannelControls& controls = at(port);
    if (!controls.Include.Checked() || !lacksCondition(port)) continue;
    return &(controls.Condition1.Valid() ? controls.Condition2 : controls.Condition1).MeasVar;
  }
  return nullptr;
}

// OK removes the incomplete channels from the program, Cancel returns to them.
bool frmExcite::onDone() {
  const std::string rows = incomplete();
  if (rows.empty()) {
    before_.Keep();
    return true;
  }
  const std::string text = JoinLines(
      {"The following ports have been selected as dynamic, ",
       "but there are no expressions configured for the states as shown:", "", rows, "",
       "These channels will be deactivated unless expressions are defined for both states."});
  if (Ask(Forms(), "Port Configurations Incomplete", text, platform::Buttons::kOkCancel) !=
      platform::Answer::kOk) {
    MoveFocus(firstMissing());
    return false;
  }
  for (int port = 1; port <= kChannels; ++port) {
    if (lacksCondition(port)) stored(port).Include = kFalse;
  }
  before_.Keep();
  return true;
}

bool frmExcite::onCancel() {
  before_.PutBack();
  return true;
}

}  // namespace ostrand
