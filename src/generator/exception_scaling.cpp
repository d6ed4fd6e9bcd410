// Multipliers and offsets of single repetitions (exceptions).
#include <algorithm>
#include <array>

#include "generator/bridge_style.h"
#include "generator/savedld.h"
#include "model/alias_except.h"
#include "model/names.h"

namespace ostrand {
namespace {

constexpr std::array<Family, 6> kOrder = {Family::kTemp,  Family::kVolt, Family::kBridge,
                                          Family::kPulse, Family::kCan,  Family::kTK40M};

// All multipliers of a block come before its offsets. Strain has gauge factors instead of
// offsets, and no multipliers.
void blockExceptions(ProgramRun& run, const BlockView& view) {
  const bool strain = IsStrain(view);
  const auto assign = [&](std::string_view array, int r, std::string_view value,
                          std::string_view what) {
    run.Put({"   ", array, "(", r, ") = ", value},
            {"'Exception ", what, " for ", view.names.source, "(", r, ") alias \"",
             view.Alias(r).AliasName, "\""});
  };
  for (int r = 1; r <= view.data->Reps; ++r) {
    const RepAlias& alias = view.Alias(r);
    if (strain || (ExceptionsOf(alias) & kMultByHand) == 0) continue;
    assign(view.names.mult, r, alias.AliasMult, "multiplier");
  }
  const std::string array = strain ? GaugeName(view.n) : view.names.offset;
  for (int r = 1; r <= view.data->Reps; ++r) {
    const RepAlias& alias = view.Alias(r);
    if ((ExceptionsOf(alias) & kOffsetByHand) == 0) continue;
    assign(array, r, alias.AliasOffset, strain ? "gauge factor" : "offset");
  }
}

}  // namespace

void SAVEDLD::Exceptions() {
  const bool any = std::any_of(kOrder.begin(), kOrder.end(), [&](Family family) {
    const auto& views = run_.Blocks(family);
    return std::any_of(views.begin(), views.end(),
                       [](const BlockView& view) { return view.except->Any(); });
  });
  if (!any) return;
  run_.PutTitle("   ", " exception multipliers and offsets ", '\'');
  for (const Family family : kOrder) {
    if (family == Family::kTK40M && run_.store.Config.TK40MQty <= 0) continue;
    for (const BlockView& view : run_.Blocks(family)) {
      if (view.except->Any()) blockExceptions(run_, view);
    }
  }
  run_.Put({"   ", Fill{'\'', 64}});
}

}  // namespace ostrand
