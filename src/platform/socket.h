// The host's connection to its communication server.
#pragma once

#include <string_view>

#include "text/result.h"

namespace ostrand {

class SocketObject {
 public:
  virtual ~SocketObject() = default;
  // Sends all bytes; the error names the peer and the reason.
  virtual Result<> SendData(std::string_view bytes) = 0;
};

}  // namespace ostrand
