#pragma once

#include <cstdio>

#include "status/judgement.h"

namespace skypost {

// Where a text is printed.
struct screen {
  std::FILE* out;
  int columns;  // 0 if it is not a terminal
  bool in_colour;
};

// Prints the status: a line for the run and one for each upload that is listed. Where a line would not fit, a reason has
// lines of its own. Passwords of the settings are hidden, and nothing is printed but ASCII. Colours repeat what the words
// say.
void print_status(const screen& to, const judged_status& judged, const settings_record& settings,
                  const tolerance& tolerated);

// Prints all that is known of one upload.
void print_upload(const screen& to, const judged_status& judged, std::size_t place,
                  const settings_record& settings);

}  // namespace skypost
