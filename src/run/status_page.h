#pragma once

#include <cstddef>
#include <cstdint>

#include "compose/upload.h"

// A run and the rapid-fire loop each record their progress as text, in a file of their own, if that exists;
// skypost-status(8) describes its lines. Nothing is recorded if another user could have planted the file, or if another
// process has locked it. Errors here never make the run fail.
namespace skypost {

// How a line says that a run or an upload began or ended.
enum class status_outcome : std::uint8_t {
  begun,      // and not ended
  good,       // for the run: it finished
  unclear,    // an upload counts as good, but there is a doubt
  failed,     // an upload
  no_report,  // run only: the data server could not be read
  stale,      // run only: outdoor data were missing or out of date, so nothing was sent
  timed_out   // run only: SIGALRM ended it
};
inline constexpr const char* OUTCOME_NAMES[] = {"begin",     "good",  "unclear",  "failed",
                                                "no-report", "stale", "timed-out"};

// The name in a line about the process itself.
inline constexpr char PROCESS_NAME[] = "skypost";

// A longer reason is cut.
inline constexpr std::size_t REASON_CAPACITY = 200;

// Appends a reason on one line; backslashes and everything but printable ASCII become \xHH.
void append_escaped(text_buffer& text, std::string_view reason);

// Opens the page for a run and records that it has begun. SIGALRM still ends the run, but is recorded first.
void begin_run_page();

// Records how the run has ended, and closes the page.
void end_run_page(status_outcome outcome);

// Opens the rapid-fire loop's page for the uploads of one pass.
void open_rapid_fire_page();
void close_page();

// Each sends an upload and records its start, so that one that hangs can be told afterwards, and its result. Call
// report_failure only after it returns. Returns 0, or -1 with the reason in `error_text`.
int send_in_run(const char* name, const upload& upload);
int send_in_rapid_fire(std::size_t network, const upload& upload);  // by its place in RAPID_FIRE_SWITCHES

}  // namespace skypost
