#pragma once

#include "common/tool.h"

namespace skypost {

// The program `skypost-settings`. Its exit status is 0; 1 if it failed (no file was changed), a check found something
// or a network did not accept an upload; 2 for an invalid command line, or if a check cannot read its files.
extern const tool SETTINGS_TOOL;

}  // namespace skypost
