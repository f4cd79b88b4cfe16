#pragma once

#include <cstddef>

#include "compose/upload.h"

// A run and the rapid-fire loop each record as text what they do, in a file of their own, if that file exists;
// skypost-status(8) describes its lines. Nothing is recorded if another user could have planted the file, or if another
// process has locked it. Errors here never make the run fail.
namespace skypost {

// Outcomes. The last two are the run's: the data server could not be read; outdoor data were missing or out of date, so
// nothing was sent.
inline constexpr char OUTCOME_BEGIN[] = "begin";
inline constexpr char OUTCOME_GOOD[] = "good";
inline constexpr char OUTCOME_UNCLEAR[] = "unclear";  // counts as good, but there is a doubt
inline constexpr char OUTCOME_FAILED[] = "failed";
inline constexpr char OUTCOME_NO_REPORT[] = "no-report";
inline constexpr char OUTCOME_STALE[] = "stale";

// The name in a line about the process itself.
inline constexpr char PROCESS_NAME[] = "skypost";

// A longer reason is cut.
inline constexpr std::size_t REASON_CAPACITY = 200;

// Appends a reason on one line, without anything that could command a terminal.
void append_escaped(text_buffer& text, std::string_view reason);

// Opens the page for a run and records that it has begun.
void begin_run_page();

// Records how the run has ended, and closes the page.
void end_run_page(const char* outcome);

// Opens the rapid-fire loop's page for the uploads of one pass.
void open_rapid_fire_page();
void close_page();

// Each sends an upload and records its start, so that one that hangs can be told afterwards, and its result. Call
// report_failure only after it returns. Returns 0, or -1 with the reason in `error_text`.
int send_in_run(const char* name, const upload& upload);
int send_in_rapid_fire(std::size_t network, const upload& upload);  // by its place in RAPID_FIRE_SWITCHES

}  // namespace skypost
