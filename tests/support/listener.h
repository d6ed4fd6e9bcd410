// A local server that listens and reads from one peer after another.
#pragma once

#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <unistd.h>

#include <string>

namespace ostrand::testing {

class Listener {
 public:
  Listener() {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    auto* plain = reinterpret_cast<sockaddr*>(&address);
    socklen_t size = sizeof address;
    EXPECT_EQ(::bind(socket_, plain, size), 0);
    EXPECT_EQ(::listen(socket_, 4), 0);
    EXPECT_EQ(::getsockname(socket_, plain, &size), 0);
    port_ = std::to_string(ntohs(address.sin_port));
  }
  ~Listener() { ::close(socket_); }
  Listener(const Listener&) = delete;
  Listener& operator=(const Listener&) = delete;

  [[nodiscard]] const std::string& Port() const { return port_; }
  [[nodiscard]] std::string Name() const { return "127.0.0.1:" + port_; }
  // All bytes of the next peer until it ends.
  [[nodiscard]] std::string Received() const {
    const int peer = ::accept(socket_, nullptr, nullptr);
    std::string bytes(1000, '\0');
    const ssize_t got = ::recv(peer, bytes.data(), bytes.size(), MSG_WAITALL);
    bytes.resize(got > 0 ? static_cast<std::size_t>(got) : 0);
    ::close(peer);
    return bytes;
  }
  void DropPeer() const { ::close(::accept(socket_, nullptr, nullptr)); }

 private:
  int socket_ = ::socket(AF_INET, SOCK_STREAM, 0);
  std::string port_;
};

}  // namespace ostrand::testing
