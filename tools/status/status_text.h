#pragma once

#include <cstdio>

#include "status/judgement.h"

namespace skypost {

// Prints the status: a line for the run and one for each upload that is listed. Passwords of the settings are hidden,
// and nothing is printed but ASCII. Colours repeat what the words say.
void print_status(std::FILE* out, const judged_status& judged, const settings_record& settings,
                  bool in_colour);

}  // namespace skypost
