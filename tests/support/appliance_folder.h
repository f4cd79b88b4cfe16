#pragma once

#include <cstdlib>

#include "sim/folder.h"

namespace skypost::testing {

// An empty appliance in its own folder; SKYPOST_ROOT points to it during its lifetime.
struct appliance_folder : sim::folder {
  appliance_folder() { setenv("SKYPOST_ROOT", root().c_str(), 1); }
  ~appliance_folder() { unsetenv("SKYPOST_ROOT"); }
};

}  // namespace skypost::testing
