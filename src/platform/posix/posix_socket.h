// A TCP connection.
#pragma once

#include <memory>
#include <string>

#include "platform/socket.h"

namespace ostrand::platform {

class TcpSocket : public SocketObject {
 public:
  // Connects to `host`, a name or an address, at `port`, a number or a service; the error names
  // both.
  static Result<std::unique_ptr<TcpSocket>> Connect(const std::string& host,
                                                    const std::string& port);
  ~TcpSocket() override;
  TcpSocket(const TcpSocket&) = delete;
  TcpSocket& operator=(const TcpSocket&) = delete;

  Result<> SendData(std::string_view bytes) override;

 private:
  TcpSocket(int descriptor, std::string peer) : descriptor_(descriptor), peer_(std::move(peer)) {}
  [[nodiscard]] bool peerIsGone() const;

  int descriptor_;
  std::string peer_;
};

}  // namespace ostrand::platform
