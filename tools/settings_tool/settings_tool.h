#pragma once

#include "common/tool.h"

namespace skypost {

// The program `skypost-settings`, which makes, shows, changes and checks settings files. Its exit status is 0, 1
// when it failed (no file was changed) or a check found something, 2 for a bad command line or when there is
// nothing that a check could read.
extern const tool SETTINGS_TOOL;

}  // namespace skypost
