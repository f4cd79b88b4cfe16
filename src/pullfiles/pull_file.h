#pragma once

#include "base/moment.h"
#include "base/text.h"
#include "live/live_record.h"
#include "settings/record.h"

namespace skypost {

inline constexpr std::size_t PULL_FILE_CAPACITY = 9'999;
using pull_text = fixed_text<PULL_FILE_CAPACITY>;

// A text file that a network fetches from the appliance's web server.
struct pull_file {
  // Appends the whole file to an empty text. Asks for no time, environment or file.
  void (*compose)(text_buffer& text, const settings_record& settings, const LiveRecord& live,
                  const moment& now);
  const char* debug_title = nullptr;  // in debug mode the text is printed under it; nullptr: it is not
};

// What every pull file does: nothing while the live data are stale, else one text, composed for this
// moment, written as the file `name` into each pull directory in turn. Returns 0, or -1 at the first
// directory in which the file cannot be opened, with the reason in `error_text`; what already stands
// in a directory before it stays.
int write_pull_file(const pull_file& file, const char* name);

}  // namespace skypost
