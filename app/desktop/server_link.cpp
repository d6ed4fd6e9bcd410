#include "server_link.h"

#include <QCoreApplication>
#include <chrono>
#include <future>
#include <optional>
#include <thread>

#include "platform/posix/posix_socket.h"

namespace ostrand::desktop {
namespace {

constexpr std::chrono::milliseconds kPause{10};

// What `work` returns; nothing when the user did not wait for it. It then ends by itself, so it
// owns all that it uses.
template <class Answer>
std::optional<Answer> inBackground(std::function<Answer()> work,
                                   const std::function<bool()>& cancelled) {
  auto task = std::make_shared<std::packaged_task<Answer()>>(std::move(work));
  std::future<Answer> answer = task->get_future();
  std::thread([task] { (*task)(); }).detach();
  while (answer.wait_for(kPause) != std::future_status::ready) {
    QCoreApplication::processEvents();
    if (cancelled()) return std::nullopt;
  }
  return answer.get();
}

}  // namespace

Result<std::unique_ptr<ServerLink>> ServerLink::Connect(const ServerAddress& address,
                                                        const std::function<bool()>& cancelled) {
  using Connected = std::shared_ptr<Result<std::unique_ptr<platform::TcpSocket>>>;
  const auto connected = inBackground<Connected>(
      [address] {
        return std::make_shared<Connected::element_type>(
            platform::TcpSocket::Connect(address.host, address.port));
      },
      cancelled);
  if (!connected) return Error{address.host + ":" + address.port + ": cancelled"};
  auto& result = **connected;
  if (!result) return Error{result.ErrorText()};
  return std::unique_ptr<ServerLink>(new ServerLink(std::move(result.Value()), cancelled));
}

Result<> ServerLink::SendData(std::string_view bytes) {
  const auto sent = inBackground<std::string>(
      [socket = socket_, copy = std::string(bytes)]() -> std::string {
        const Result<> done = socket->SendData(copy);
        return done ? std::string() : done.ErrorText();
      },
      cancelled_);
  failure_ = sent ? *sent : "cancelled";
  sent_ = failure_.empty();
  if (!sent_) return Error{failure_};
  return Done{};
}

}  // namespace ostrand::desktop
