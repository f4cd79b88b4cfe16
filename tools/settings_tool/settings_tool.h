#pragma once

#include "common/tool.h"

namespace skypost {

// The program `skypost-settings`, which creates, shows, changes and checks settings files. Its exit status is 0; 1 if
// it failed (no file was changed) or a check found something; 2 for an invalid command line, or if a check cannot
// read its files.
extern const tool SETTINGS_TOOL;

}  // namespace skypost
