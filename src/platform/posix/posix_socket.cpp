#include "platform/posix/posix_socket.h"

#include <netdb.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

#include "platform/posix/system_error.h"

namespace ostrand::platform {

Result<std::unique_ptr<TcpSocket>> TcpSocket::Connect(const std::string& host,
                                                      const std::string& port) {
  const std::string peer = host + ":" + port;
  addrinfo wanted{};
  wanted.ai_family = AF_UNSPEC;
  wanted.ai_socktype = SOCK_STREAM;
  addrinfo* found = nullptr;
  if (const int error = ::getaddrinfo(host.c_str(), port.c_str(), &wanted, &found); error != 0) {
    return Error{peer + ": " + ::gai_strerror(error)};
  }
  int error = 0;
  int descriptor = -1;
  for (const addrinfo* address = found; address != nullptr && descriptor < 0;
       address = address->ai_next) {
    const int candidate =
        ::socket(address->ai_family, address->ai_socktype | SOCK_CLOEXEC, address->ai_protocol);
    if (candidate >= 0 && ::connect(candidate, address->ai_addr, address->ai_addrlen) == 0) {
      descriptor = candidate;
    } else {
      error = errno;
      if (candidate >= 0) ::close(candidate);
    }
  }
  ::freeaddrinfo(found);
  if (descriptor < 0) return SystemError(peer, error);
  return std::unique_ptr<TcpSocket>(new TcpSocket(descriptor, peer));
}

TcpSocket::~TcpSocket() { ::close(descriptor_); }

Result<> TcpSocket::SendData(std::string_view bytes) {
  // The first bytes to a peer that has closed are accepted silently, so the peer is checked first.
  if (peerIsGone()) return Error{peer_ + ": the other side has closed the connection"};
  while (!bytes.empty()) {
    const ssize_t sent = ::send(descriptor_, bytes.data(), bytes.size(), MSG_NOSIGNAL);
    if (sent < 0 && errno == EINTR) continue;
    if (sent < 0) return SystemError(peer_, errno);
    bytes.remove_prefix(static_cast<std::size_t>(sent));
  }
  return Done{};
}

bool TcpSocket::peerIsGone() const {
  char byte = 0;
  const ssize_t got = ::recv(descriptor_, &byte, 1, MSG_PEEK | MSG_DONTWAIT);
  return got == 0 || (got < 0 && errno != EAGAIN && errno != EWOULDBLOCK && errno != EINTR);
}

}  // namespace ostrand::platform
