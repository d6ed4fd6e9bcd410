// Further stores beside the one of the process.
#pragma once

#include <memory>

#include "model/store.h"

namespace ostrand {

// A cleared store on the heap, as it is too large for a stack.
std::unique_ptr<ProjectStore> NewStore();

}  // namespace ostrand
