#pragma once

#include <cstdlib>

#include "sim/folder.h"

namespace skypost::testing {

// An empty appliance in a folder of its own: SKYPOST_ROOT points to it while it lives.
struct appliance_folder : sim::folder {
  appliance_folder() { setenv("SKYPOST_ROOT", root().c_str(), 1); }
  ~appliance_folder() { unsetenv("SKYPOST_ROOT"); }
};

}  // namespace skypost::testing
