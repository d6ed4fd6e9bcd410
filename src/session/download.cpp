// The message that asks the toolbar server for a download.
#include <algorithm>
#include <cstdint>
#include <vector>

#include "platform/guarded.h"
#include "platform/socket.h"
#include "session/session_state.h"
#include "text/codepage.h"

namespace ostrand {
namespace {

constexpr i32 kDownloadMessage = 101;
constexpr i32 kDownloadCode = 1515;
constexpr std::string_view kDownloadApplication = "Harrier";

constexpr std::size_t kLongBytes = 4;

}  // namespace

void Ostrand::LongToMessage(i32 lng, unsigned char*& pDst) {
  const auto bits = static_cast<std::uint32_t>(lng);
  for (int shift = 24; shift >= 0; shift -= 8) {
    *pDst++ = static_cast<unsigned char>(bits >> shift);
  }
}

void Ostrand::StringToMessage(std::string_view Str, unsigned char*& pDst) {
  const std::string bytes = LowBytes(Str);
  LongToMessage(static_cast<i32>(bytes.size()), pDst);
  pDst = std::copy(bytes.begin(), bytes.end(), pDst);
}

void Ostrand::HarrierDownload(const std::string& FileName) {
  if (!state_->isSocketConnected || state_->socketControl == nullptr) {
    state_->around.forms.ShowBox(
        {.title = "",
         .text = "Ostrand is not registered with the Harrier toolbar server-- no connection"});
    return;
  }
  // The length counts what follows it: number, code, application, two values, file.
  const std::size_t length =
      6 * kLongBytes + kDownloadApplication.size() + LowBytes(FileName).size();
  std::vector<unsigned char> message(kLongBytes + length);
  unsigned char* at = message.data();
  LongToMessage(static_cast<i32>(length), at);
  LongToMessage(kDownloadMessage, at);
  LongToMessage(kDownloadCode, at);
  StringToMessage(kDownloadApplication, at);
  LongToMessage(1, at);
  LongToMessage(1, at);
  StringToMessage(FileName, at);
  Guarded(state_->around.forms, "Ostrand.HarrierDownload", [&] {
    const Result<> sent =
        state_->socketControl->SendData(std::string(message.begin(), message.end()));
    if (!sent) throw FileAccess(sent.ErrorText());
  });
}

}  // namespace ostrand
