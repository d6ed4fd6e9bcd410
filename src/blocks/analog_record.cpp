#include "blocks/analog_record.h"

#include <algorithm>
#include <tuple>

#include "model/channels.h"

namespace ostrand {
namespace {

auto edited(const AnalogBlock& block) {
  return std::tie(block.Reps, block.DataResolution, block.Public, block.Units, block.DefaultMult,
                  block.DefaultOffset, block.ZeroFlag, block.CalOnSite, block.MeasType, block.Range,
                  block.OpenSensDetect, block.IntegrationRange, block.Integration, block.ReverseMes,
                  block.SettleTime, block.StartChan);
}

auto texts(const RepAlias& alias) {
  return std::tie(alias.AliasName, alias.AliasUnits, alias.AliasMult, alias.AliasOffset,
                  alias.AliasExcept);
}

flag flagOf(bool on) { return on ? kTrue : kFalse; }

}  // namespace

void SetAnalogObject(cOrvusData& data, const AnalogBlock& block) {
  cAnalogConfig& analog = *data.Analog();
  // The scale sets units and scaling, so the block's own values follow it.
  if (analog.MeasureType() == ORVUS_MEASURE_TC) analog.TempScaleUnits(block.Units);
  data.Reps = block.Reps;
  data.DataTypeString(block.DataResolution);
  data.IsPublic = block.Public;
  data.DefaultUnits = block.Units;
  data.DefaultMult = block.DefaultMult;
  data.DefaultOffset = block.DefaultOffset;
  data.StartChannel = block.StartChan;
  analog.ZeroFlag = block.ZeroFlag;
  analog.SiteCal = block.CalOnSite;
  analog.InputType = IsSingleEnded(block.MeasType) ? ORVUS_INPUT_SE : ORVUS_INPUT_DIFF;
  analog.InputRange = block.Range;
  analog.OpenSens = block.OpenSensDetect != kFalse;
  analog.RevMeas = block.ReverseMes != kFalse;
  analog.IntegCode(block.IntegrationRange);
  analog.RestoreTimes(block.Integration, block.SettleTime);
}

void SetAnalogBlock(AnalogBlock& block, const cOrvusData& data) {
  const cAnalogConfig& analog = *data.Analog();
  block.Reps = data.Reps;
  if (data.DataType != ORVUS_OUTDATA_NONE) block.DataResolution = data.DataTypeString();
  block.Public = data.IsPublic;
  block.Units = data.DefaultUnits;
  block.DefaultMult = data.DefaultMult;
  block.DefaultOffset = data.DefaultOffset;
  block.BlockTime = data.BlockTime();
  block.ZeroFlag = analog.ZeroFlag;
  block.CalOnSite = analog.SiteCal;
  block.MeasType = analog.InputTypeString();
  block.Range = analog.InputRange;
  if (analog.RangeCode() >= 0) block.RangeNo = static_cast<i16>(analog.RangeCode());
  block.OpenSensDetect = flagOf(analog.OpenSens);
  block.IntegrationRange = analog.IntegCode();
  block.Integration = analog.IntegTime();
  block.ReverseMes = flagOf(analog.RevMeas);
  block.SettleTime = analog.SettleTime();
  block.StartChan = data.StartChannel;
}

bool SameAnalogBlock(const AnalogBlock& left, const AnalogBlock& right) {
  return edited(left) == edited(right) && left.Output == right.Output &&
         std::equal(left.Alias.begin(), left.Alias.end(), right.Alias.begin(),
                    [](const RepAlias& a, const RepAlias& b) { return texts(a) == texts(b); });
}

}  // namespace ostrand
