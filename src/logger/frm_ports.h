// The control ports: each set by conditions, or all of them written or read as a byte.
#pragma once

#include <memory>
#include <string>

#include "conditions/backup.h"
#include "conditions/condition_variables.h"
#include "controls/choice.h"
#include "controls/screen.h"
#include "logger/state_rows.h"

namespace ostrand {

// The eight bits of a number as PortMaskText writes it, typed in any form: "&B101", "&HF0" or "15",
// 0 to 255. One without a prefix is in the form of the code type. Empty for a text that is none.
std::string MaskBits(std::string_view text, std::string_view codeType);

// Edits the first group of ports in place; Cancel puts back what was there. Controls carry the
// number of their port: "Include3", "State1MeasureVar3"; 9 is the byte of all ports.
class frmPorts final : public Screen {
 public:
  explicit frmPorts(const ScreenContext& context);
  ~frmPorts() override;

  Choice ByteMode;  // "Bit-Write", "Byte"
  Choice ReadMode;  // "Write", "Read"; of bytes only
  Choice CodeType;  // "BIN", "HEX", "DEC"
  Label ModeMessage;
  Opener Output;  // what tables store of the byte

 protected:
  bool onDone() override;
  bool onCancel() override;

 private:
  static constexpr int kByte = kPorts;  // the port that means the byte
  static constexpr int kMasks = 3;      // of state 1, of state 2, of the ports in use
  struct PortControls;
  struct MaskField;

  [[nodiscard]] PortControls& at(int port) { return *ports_[port]; }
  [[nodiscard]] PortSlot& slot() const { return store().Ports.Slot[0]; }
  [[nodiscard]] bool isByte() const { return slot().ByteMode != 0; }
  [[nodiscard]] bool isRead() const { return slot().ReadMode != 0; }
  // The byte that is read is set by no conditions.
  [[nodiscard]] bool hasConditions(int port) const { return !(port == kByte && isRead()); }
  void bindModes();
  void bind(int port);
  void load(int port);
  void takeState(int port, int state);
  void takeMask(int place);
  void showMasks();
  void refresh();
  void refresh(int port);
  void viewCode(int port);
  [[nodiscard]] std::string bitCode(int port) const;
  [[nodiscard]] std::string byteCode() const;

  ConditionVariables variables_;
  Backup<PortSetup> before_;
  Row<std::unique_ptr<PortControls>, 1, kPorts> ports_;
  Row<std::unique_ptr<TextField>, 0, kMasks - 1> masks_;
};

}  // namespace ostrand
