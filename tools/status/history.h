#pragma once

#include "status/record.h"

namespace skypost {

inline constexpr char HISTORY_PATH[] = "/var/run/nimbulog/skypost.history";

// Which pages another process is writing now.
struct status_at_work {
  bool run;
  bool rapid_fire;
};

// Reads the history and what both status pages add to it. A page adds nothing twice. The history stays open, and locked
// where it may be written. Returns 0, or -1 with the reason in errno if the page of the runs is missing or may not be
// read.
int read_status(status_records& records, status_at_work& at_work);

// Writes the history that read_status() has opened. Returns 0, or -1 if that failed, or another process has it locked, or
// it may not be written.
int keep_status(const status_records& records);

}  // namespace skypost
