// The connection to the logger server, which never stops the window.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "desktop_settings.h"
#include "platform/socket.h"

namespace ostrand::desktop {

// Connects and sends in a thread, while the events of the windows run.
class ServerLink final : public SocketObject {
 public:
  // Returns an error with the reason if there is no connection. Calls `cancelled` while it waits,
  // and gives up once that returns true.
  static Result<std::unique_ptr<ServerLink>> Connect(const ServerAddress& address,
                                                     const std::function<bool()>& cancelled);

  Result<> SendData(std::string_view bytes) override;
  [[nodiscard]] bool Sent() const { return sent_; }
  // Why the last bytes were not sent; empty if they were.
  [[nodiscard]] const std::string& Failure() const { return failure_; }

 private:
  ServerLink(std::shared_ptr<SocketObject> socket, std::function<bool()> cancelled)
      : socket_(std::move(socket)), cancelled_(std::move(cancelled)) {}

  std::shared_ptr<SocketObject> socket_;
  std::function<bool()> cancelled_;
  std::string failure_;
  bool sent_ = false;
};

}  // namespace ostrand::desktop
