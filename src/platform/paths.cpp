#include "platform/paths.h"

namespace ostrand::platform {

SplitPath Split(std::string_view path) {
  const std::size_t at = path.find_last_of("\\/");
  if (at == std::string_view::npos) return {"", std::string(path)};
  return {std::string(path.substr(0, at + 1)), std::string(path.substr(at + 1))};
}

std::string_view WithoutExtension(std::string_view path) {
  const std::size_t dot = path.find_last_of(".\\/");
  return dot == std::string_view::npos || path[dot] != '.' ? path : path.substr(0, dot);
}

std::string WithSeparator(std::string_view folder) {
  std::string result(folder);
  if (result.empty() || result.back() == '\\' || result.back() == '/') return result;
  const bool slashes = result.find('/') != std::string::npos;
  const bool backslashes = result.find('\\') != std::string::npos;
  result += slashes && !backslashes ? '/' : '\\';
  return result;
}

}  // namespace ostrand::platform
