// The user of an embedded session: the host program.
#pragma once

#include <ostrand/host.h>

#include <optional>
#include <string>
#include <utility>

#include "platform/forms.h"
#include "session/ostrand.h"

namespace ostrand::embedding {

// Passes what the system asks on to a host, in UTF-8 and lines of LF.
class HostForms : public platform::Forms {
 public:
  explicit HostForms(Host& host) : host_(host) {}

  // Forgets the last box, before a call.
  void StartCall() { lastBox_.clear(); }
  // The next dialog that asks where to save gets this path.
  void SaveAs(std::string path) { saveName_ = std::move(path); }
  // Takes the path back; false when a dialog has taken it.
  bool ForgetName() { return std::exchange(saveName_, std::nullopt).has_value(); }
  // The last box of this call as one error text, or `otherwise` if there was none.
  [[nodiscard]] std::string LastBoxOr(const std::string& otherwise) const;

  platform::Answer ShowBox(const platform::MessageBox& box) override;
  std::optional<std::string> AskOpen(const platform::FileDialog& dialog) override;
  std::optional<std::string> AskSave(const platform::FileDialog& dialog) override;
  void SetHelpLine(const std::string& text) override;
  void SetPointer(platform::Pointer shape) override;
  void Beep() override { host_.Beep(); }
  void DoEvents() override { host_.RunEvents(); }

 private:
  Host& host_;
  std::optional<std::string> saveName_;
  std::string lastBox_;
};

// Forms that show everything through others, which can be exchanged.
class ExchangedForms : public platform::Forms {
 public:
  explicit ExchangedForms(platform::Forms& usual) : present_(&usual) {}
  // Returns the ones before.
  platform::Forms& Exchange(platform::Forms& forms);

  platform::Answer ShowBox(const platform::MessageBox& box) override {
    return present_->ShowBox(box);
  }
  std::optional<std::string> AskOpen(const platform::FileDialog& dialog) override {
    return present_->AskOpen(dialog);
  }
  std::optional<std::string> AskSave(const platform::FileDialog& dialog) override {
    return present_->AskSave(dialog);
  }
  void SetHelpLine(const std::string& text) override { present_->SetHelpLine(text); }
  void ShowWaiting(const std::string& text) override { present_->ShowWaiting(text); }
  void SetPointer(platform::Pointer shape) override { present_->SetPointer(shape); }
  void Beep() override { present_->Beep(); }
  void ShowHelp(const std::string& file, int context) override {
    present_->ShowHelp(file, context);
  }
  void DoEvents() override { present_->DoEvents(); }

 private:
  platform::Forms* present_;
};

// Passes the events of the control on to a host; those that a host may answer by a new call, when
// the present one is over.
class HostEvents : public OstrandEvents {
 public:
  explicit HostEvents(Host& host) : host_(host) {}

  void DownloadRequest(const std::string& sFileName, bool /*isInside*/) override {
    program_ = sFileName;
  }
  void NewFile(const std::string& sFileName) override { host_.ProjectNamed(sFileName); }
  void SessionComplete() override { complete_ = true; }
  void DirtyChanged(bool dirty) override { host_.UnsavedChanged(dirty); }
  void SummaryDrawn() override { host_.SummaryChanged(); }

  void StartCall();
  // Whether this call has a program for the logger.
  [[nodiscard]] bool HasProgram() const { return program_.has_value(); }
  // Raises what waited for the end of the call.
  void EndCall();

 private:
  Host& host_;
  std::optional<std::string> program_;
  bool complete_ = false;
};

}  // namespace ostrand::embedding
