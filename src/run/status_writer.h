#pragma once

#include "compose/upload.h"
#include "run/status_file.h"

// Keeps the status file up to date. Without the file, with one that others could have put in its place, or while
// another process keeps the same part, nothing is kept. No error of the file is one of the run.
namespace skypost {

// Opens the file for a run, and records that it has begun.
void begin_run_status();

// Records how the run has ended, and closes the file.
void end_run_status(status_outcome outcome);

// Opens the file for the uploads of one pass, until it is closed.
void open_rapid_fire_status();
void close_status();

// Sends the upload, and records that under its name: when it begins, so that one which never ends is found, and when it
// has ended, which is before its failure is reported. Returns 0, or -1 with the reason in `error_text`.
int send_recorded(const upload_switch& row, const upload& upload);

}  // namespace skypost
