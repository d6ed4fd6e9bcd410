// Names, units and scaling of the single sensors of a block.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "conditions/aliases.h"
#include "conditions/screen_requests.h"
#include "controls/numeric_field.h"
#include "controls/screen.h"
#include "model/alias_rename.h"

namespace ostrand {

// Edits copies of the rows, which their owner receives at Done. A cell that shows the block's
// default is stored blank; one that differs from it is marked as set by hand. Done also renames
// conditions of tables; the caller restores them when the block is cancelled.
class frmFldName final : public Screen {
 public:
  // The aliases of the block must outlive the screen. "SOLVE" is disabled for sensors without a
  // calculator.
  frmFldName(const ScreenContext& context, FieldNamesRequest block);

  // A sensor, from 1: "FieldName1", "AliasName1", "AliasUnits1", "AliasMult1", "AliasOffset1"
  // ("AliasGFactor1" for strain), "Solve1", "Reset1".
  struct Sensor {
    Sensor(Screen& screen, int number, bool gaugeFactor);
    Label FieldName;
    TextField AliasName;
    UnitField AliasUnits;
    NumericField AliasMult;
    NumericField AliasOffset;
    Opener Solve;
    Button Reset;
  };
  Sensor& operator[](int sensor) { return *sensors_[static_cast<std::size_t>(sensor - 1)]; }

  Lamp AliasLight;
  Lamp UnitsLight;
  Lamp ScalingLight;
  Button DefaultName;
  Button DefaultUnits;
  Button DefaultMult;
  Button DefaultOffset;

 protected:
  bool onDone() override;
  bool onCancel() override;

 private:
  // A column of numbers.
  struct Number {
    int byHand;
    std::string RepAlias::*entry;
    float DefaultScaling::*byDefault;
    NumericField Sensor::*field;
  };
  static const Number kMult;
  static const Number kOffset;

  void bind();
  void bindSensor(std::size_t at);
  void show();
  void showSensor(std::size_t at);
  [[nodiscard]] std::string_view whyNot(std::size_t at, std::string_view alias,
                                        std::string_view units) const;
  [[nodiscard]] float valueOf(const RepAlias& row, const Number& column) const;

  void takeName(std::size_t at);
  void takeUnits(std::size_t at, std::string_view units);
  void takeNumber(std::size_t at, const Number& column, const std::string& text);
  void solve(std::size_t at);
  void forEach(const std::function<void(std::size_t)>& change);

  // Why the sensors have no calculator; empty when they have one.
  [[nodiscard]] std::string_view whyNoCalculator() const;
  [[nodiscard]] std::string elementOf(std::size_t at) const;
  [[nodiscard]] AliasRenames renames() const;
  bool agreedTo(const AliasRenames& renames);

  FieldNamesRequest block_;
  SolveSource source_;  // of a sensor
  std::vector<RepAlias> rows_;
  std::vector<std::unique_ptr<Sensor>> sensors_;
};

}  // namespace ostrand
