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
  timed_out,
  killed,  // or crashed
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
};

// What an owner takes for a fault.
struct tolerance {
  std::uint32_t failures = 1;              // so many in a row
  std::int64_t seconds_since_run = 3'600;  // more than so many
};

// The status for the networks that are switched on in `settings`, at the time `now` in seconds since the epoch. Refers
// to `records`.
judged_status judge(const status_records& records, const settings_record& settings,
                    const status_at_work& at_work, std::int64_t now);

// True if the last run has not come to its end.
bool has_run_failed(const judged_status& judged);

// True if the last run did not come to its end, is in the future or is too old. While a run is going on, the one before
// counts.
bool is_run_wrong(const judged_status& judged, const tolerance& tolerated);

// The failures in a row of the run or an upload.
std::uint32_t failures_in_row(const judged_status& judged, std::size_t place);

// True if an upload has failed often enough or, where one failure is enough, is in doubt or was never made.
bool is_upload_wrong(const judged_status& judged, std::size_t place, const tolerance& tolerated);

}  // namespace skypost
