// The control ports: set one by one by conditions, or written or read together as a byte.
#pragma once

#include <memory>
#include <string>

#include "conditions/backup.h"
#include "conditions/condition_variables.h"
#include "controls/choice.h"
#include "controls/screen.h"
#include "logger/state_rows.h"

namespace ostrand {

// A number from 0 to 255, typed in any notation ("&B101", "&HF0", "15"), as the eight bits that
// PortMaskText writes. Without a prefix the notation is that of the code type. Empty for any other
// text.
std::string MaskBits(std::string_view text, std::string_view codeType);

// Edits the first group of ports in place; Cancel restores it. Names of controls contain the port
// number: "Include3", "State1MeasureVar3"; 9 is the byte of all ports.
class frmPorts final : public Screen {
 public:
  explicit frmPorts(const ScreenContext& context);
  ~frmPorts() override;

  Choice ByteMode;  // "Bit-Write", "Byte"
  Choice ReadMode;  // "Write", "Read"; for bytes only
  Choice CodeType;  // "BIN", "HEX", "DEC"
  Label ModeMessage;
  Opener Output;  // table outputs of the byte

 protected:
  bool onDone() override;
  bool onCancel() override;

 private:
  static constexpr int kByte = kPorts;  // port number of the byte
  static constexpr int kMasks = 3;      // of state 1, of state 2, of the ports in use
  struct PortControls;
  struct MaskField;

  [[nodiscard]] PortControls& at(int port) { return *ports_[port]; }
  [[nodiscard]] PortSlot& slot() const { return store().Ports.Slot[0]; }
  [[nodiscard]] bool isByte() const { return slot().ByteMode != 0; }
  [[nodiscard]] bool isRead() const { return slot().ReadMode != 0; }
  // Conditions do not apply to a byte that is read.
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
