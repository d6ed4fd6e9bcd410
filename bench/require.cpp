#include <fmt/format.h>

#include <cstdio>
#include <cstdlib>

#include "row.h"

namespace ostrand::bench {

void Require(bool holds, std::string_view what) {
  if (holds) return;
  fmt::print(stderr, "not as it must be: {}\n", what);
  std::exit(1);
}

void Use(std::size_t) {}  // in a separate source, so that the compiler cannot inline it

}  // namespace ostrand::bench
