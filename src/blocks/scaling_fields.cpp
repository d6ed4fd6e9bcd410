#include "blocks/scaling_fields.h"

#include "model/name_limits.h"
#include "model/names.h"
#include "model/store.h"

namespace ostrand {

void LimitUnits(UnitField& units, OrvusDataObjTypes kind) {
  static_assert(kBlocks <= 9);  // the names of all arrays have the same length
  units.WhyNot = [array = SourceName(kind, 1)](std::string_view text) {
    return UnitsFit(array, text) ? "" : kTooLongHelp;
  };
}

void BindScale(NumericField& field, const std::function<float&()>& member,
               double (*step)(double value, bool up)) {
  field.OnTake = [&field, member] { member() = static_cast<float>(field.Value()); };
  field.OnSpin = [&field, member, step](bool up) {
    field.Value(step(field.Value(), up));
    member() = static_cast<float>(field.Value());
  };
}

}  // namespace ostrand
