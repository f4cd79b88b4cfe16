#pragma once

#include "pullfiles/pull_file.h"

namespace skypost {

extern const pull_file AWEKAS_FILE;
extern const pull_file WEDAAL_FILE;
extern const pull_file WETTERPAGE24_FILE;

// Each writes the file `name` into the pull directories and returns 0, or -1 with the reason in
// `error_text`.
int write_awekas_file(const char* name);
int write_wedaal_file(const char* name);
int write_wetterpage24_file(const char* name);

}  // namespace skypost
