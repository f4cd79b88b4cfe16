#pragma once

#include "compose/outgoing.h"

// The text files that networks fetch from the appliance's web server.
//
// A writer composes its file once and writes it into each pull directory in turn. It returns 0, or -1 at the
// first directory in which the file cannot be opened, with the reason in `error_text`; an earlier copy is
// kept. While the live data are stale it writes nothing and returns 0.
namespace skypost {

struct pull_file : outgoing {
  consteval pull_file(const char* called, composer composed_by, int (*written_by)(), const char* file_name,
                      const char* printed_under = nullptr)
      : outgoing{called, carrier::file, composed_by, written_by},
        name(file_name),
        debug_title(printed_under) {}

  const char* name;         // in the pull directories
  const char* debug_title;  // heading in debug output; nullptr: the text is not printed
};

extern const pull_file AWEKAS_PULL;
extern const pull_file HETWEERACTUEEL;
extern const pull_file METEOCLIMATIC;
extern const pull_file WEDAAL_PULL;
extern const pull_file WETTERPAGE24;
extern const pull_file WETTERSPIEGEL;

int write_awekas_file();
int write_hetweeractueel_file();
int write_meteoclimatic_file();
int write_wedaal_file();
int write_wetterpage24_file();
int write_wetterspiegel_file();

// The body of every writer.
int write_pull_file(const pull_file& file);

}  // namespace skypost
