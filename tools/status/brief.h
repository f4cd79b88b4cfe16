#pragma once

#include <cstdio>

#include "status/judgement.h"

namespace skypost {

// Prints what is wrong on one line, as "2 of 14 networks fail: windfinder (3 in a row, login refused), WOW (unclear, ...)".
// What is wrong with the run comes first. Passwords of the settings are hidden, and nothing is printed but ASCII.
void print_brief(std::FILE* out, const judged_status& judged, const settings_record& settings,
                 const tolerance& tolerated);

}  // namespace skypost
