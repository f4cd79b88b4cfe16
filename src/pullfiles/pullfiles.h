#pragma once

#include "compose/outgoing.h"

// The text files that networks fetch from the appliance's web server.
//
// A writer composes the file `name` once and writes it into each pull directory in turn. It returns 0, or -1
// at the first directory in which the file cannot be opened, with the reason in `error_text`; a copy written
// before stays. While the live data are stale it writes nothing and returns 0.
namespace skypost {

struct pull_file : outgoing {
  consteval pull_file(const char* called, composer composed_by, const char* printed_under = nullptr)
      : outgoing{called, carrier::file, composed_by}, debug_title(printed_under) {}

  const char* debug_title;  // in debug mode the text is printed under it; nullptr: it is not
};

extern const pull_file AWEKAS_PULL;
extern const pull_file HETWEERACTUEEL;
extern const pull_file METEOCLIMATIC;
extern const pull_file WEDAAL_PULL;
extern const pull_file WETTERPAGE24;
extern const pull_file WETTERSPIEGEL;

int write_awekas_file(const char* name);
int write_hetweeractueel_file(const char* name);
int write_meteoclimatic_file(const char* name);
int write_wedaal_file(const char* name);
int write_wetterpage24_file(const char* name);
int write_wetterspiegel_file(const char* name);

// What every writer does, with its file.
int write_pull_file(const pull_file& file, const char* name);

}  // namespace skypost
