#pragma once

#include <cstddef>
#include <cstdint>
#include <iterator>

#include "base/error_text.h"
#include "run/status_page.h"
#include "run/upload_switch.h"

namespace skypost {

// The latest run, or the latest upload under one name. Times are milliseconds since the epoch; 0 means never.
struct status_record {
  std::int64_t time = 0;  // when it began, or ended if it has
  status_outcome outcome = status_outcome::begun;
  // Until this upload ends, these describe the previous one.
  int wget_status = NO_WGET_STATUS;
  char reason[REASON_CAPACITY + 1] = "";  // of the run: what news told last
  std::uint32_t failures = 0;  // consecutive; one that never ended is counted when the next one begins
  std::int64_t last_good = 0;
  std::int64_t page = 0;               // start of the run or loop whose page reported this
  std::uint32_t failures_in_page = 0;  // how many of the failures this page has reported
  // When the failures in a row began, and when news told of them last. Once told, both stay until news has told that it
  // works again.
  std::int64_t failing_since = 0;
  std::int64_t told = 0;
};

// Record layout: the run, then the steps of the run list, then rapid fire, each in list order.
inline constexpr std::size_t RUN_RECORD = 0;
inline constexpr std::size_t FIRST_STEP_RECORD = RUN_RECORD + 1;
inline constexpr std::size_t FIRST_RAPID_FIRE_RECORD = FIRST_STEP_RECORD + std::size(STEP_SWITCHES);
inline constexpr std::size_t STATUS_RECORDS = FIRST_RAPID_FIRE_RECORD + std::size(RAPID_FIRE_SWITCHES);

using status_records = status_record[STATUS_RECORDS];

inline constexpr const char* RECORD_NAMES[STATUS_RECORDS] = {
    PROCESS_NAME,
#define STEP(name, ...) name,
#define RAPID_FIRE(name, ...) name,
#include "run/run_list.def"
};

// True if the latest run or upload began and has not ended.
inline bool is_unfinished(const status_record& record) {
  return record.time != 0 && record.outcome == status_outcome::begun;
}

}  // namespace skypost
