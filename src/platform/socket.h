// The host's connection to its communication server.
#pragma once

#include <string_view>

#include "text/result.h"

namespace ostrand {

class SocketObject {
 public:
  virtual ~SocketObject() = default;
  // Hands all bytes over, or tells why it could not.
  virtual Result<> SendData(std::string_view bytes) = 0;
};

}  // namespace ostrand
