// Ostrand in another program: open a project, set it up by a script, check it, generate, save and
// compile it, and hear what happens. This one header is enough. The guide is docs/embedding.md.
//
// Stable are the names, signatures and meanings declared in the headers of this folder; they change
// only with the first number of the version. New members of `Host` have a default, and new members
// of the plain structs come last. The binary interface is not stable: compile the host and the
// static library with the same compiler and C++ library. All other headers of the project are
// internal and not installed.
#pragma once

#include "ostrand/host.h"
#include "ostrand/session.h"
