#pragma once

#include <cstddef>
#include <cstdint>

#include "status/history.h"

namespace skypost {

enum class run_state : std::uint8_t {
  never_begun,
  going_on,
  complete,
  no_report,
  no_outdoor_data,
  ended_in_upload,        // by SIGALRM, in the last upload that it began
  ended_in_alarm_script,  // called for the failure of that upload
  ended_otherwise,        // after that upload, or before the first
};

enum class upload_state : std::uint8_t {
  not_listed,  // off
  not_tried,
  good,
  unclear,  // counts as good, but there is a doubt
  failed,
  hung,     // has begun and was ended before it was done
  no_turn,  // the run was ended before it
};

struct judged_status {
  const status_record* records;
  run_state run;
  std::size_t last_begun;          // the record of the last upload that the run began; RUN_RECORD if none
  std::int64_t seconds_since_run;  // since the last run began; 0 if none has
  bool is_run_in_future;           // so the clock has been set back since
  upload_state uploads[STATUS_RECORDS];
  bool is_good;
};

// Without a run for so long, in seconds, something is wrong.
inline constexpr std::int64_t LONGEST_WITHOUT_A_RUN = 3'600;

// The status for the networks that are switched on in `settings`, at the time `now` in seconds since the epoch. Refers
// to `records`.
judged_status judge(const status_records& records, const settings_record& settings,
                    const status_at_work& at_work, std::int64_t now);

}  // namespace skypost
