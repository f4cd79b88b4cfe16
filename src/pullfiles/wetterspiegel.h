#pragma once

#include "pullfiles/pull_file.h"

namespace skypost {

extern const pull_file WETTERSPIEGEL_FILE;

// Writes the file `name` into the pull directories and returns 0, or -1 with the reason in `error_text`.
int write_wetterspiegel_file(const char* name);

}  // namespace skypost
