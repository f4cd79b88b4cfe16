#pragma once

#include "status/judgement.h"

namespace skypost {

// Is run, after a run, with each line of news as its only argument.
inline constexpr char TELL_PATH[] = "/etc/skypost/tell";

// Enough for a line about the run and one about each upload.
inline constexpr std::size_t LONGEST_NEWS = 600 * STATUS_RECORDS;

// Appends a line for each thing worth telling at the time `now`, in milliseconds since the epoch, and notes in `records`,
// which `judged` refers to, that it was told: the second failure in a row, once a day while they last, and then that it
// works again. An upload that timed out is told as the run that it ended. Passwords of the settings are hidden, and
// nothing is appended but ASCII.
void append_news(text_buffer& news, status_records& records, const judged_status& judged,
                 const settings_record& settings, std::int64_t now);

}  // namespace skypost
