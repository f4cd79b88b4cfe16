#include "status/judgement.h"

#include <algorithm>

#include "run/last_run.h"

namespace skypost {
namespace {

// The run takes its steps in the order of the records, so the last one in its page is where it was.
std::size_t last_begun_by_run(const status_record* records) {
  std::size_t last = RUN_RECORD;
  for (std::size_t i = FIRST_STEP_RECORD; i < FIRST_RAPID_FIRE_RECORD; ++i)
    if (records[i].time != 0 && records[i].page == records[RUN_RECORD].page) last = i;
  return last;
}

run_state state_of_run(const status_record& run, bool is_at_work) {
  if (run.time == 0) return run_state::never_begun;
  if (is_unfinished(run)) return is_at_work ? run_state::going_on : run_state::killed;
  if (run.outcome == status_outcome::no_report) return run_state::no_report;
  if (run.outcome == status_outcome::stale) return run_state::no_outdoor_data;
  if (run.outcome == status_outcome::timed_out) return run_state::timed_out;
  return run_state::complete;
}

bool was_ended(run_state run) { return run >= run_state::timed_out; }

// While an upload is under way, the previous one is judged.
upload_state state_of(const status_record& record, bool is_under_way) {
  if (record.time == 0) return upload_state::not_tried;
  if (is_unfinished(record)) {
    if (!is_under_way) return upload_state::hung;
    if (record.failures > 0) return upload_state::failed;
    if (record.reason[0] != '\0') return upload_state::unclear;
    return record.last_good > 0 ? upload_state::good : upload_state::not_tried;
  }
  if (record.outcome == status_outcome::unclear) return upload_state::unclear;
  return record.outcome == status_outcome::good ? upload_state::good : upload_state::failed;
}

upload_state state_of_step(const judged_status& judged, std::size_t place) {
  if (was_ended(judged.run) && place > judged.last_begun) return upload_state::no_turn;
  const bool is_under_way = judged.run == run_state::going_on && place == judged.last_begun;
  return state_of(judged.records[place], is_under_way);
}

// A network that has no switch for rapid fire is listed once rapid fire has served it.
bool is_listed(const upload_switch& row, const status_record& record, const settings_record& settings) {
  return is_enabled(row, settings) && (row.rapid_enabled != nullptr || record.time != 0);
}

}  // namespace

judged_status judge(const status_records& records, const settings_record& settings,
                    const status_at_work& at_work, std::int64_t now) {
  judged_status judged{};
  judged.records = records;
  const status_record& run = records[RUN_RECORD];
  judged.last_begun = last_begun_by_run(records);
  judged.run = state_of_run(run, at_work.run);
  if (run.time != 0) judged.seconds_since_run = now - run.page / 1'000;
  judged.is_run_in_future = judged.seconds_since_run < -TOLERATED_CLOCK_CHANGE;

  std::size_t place = FIRST_STEP_RECORD;
  for (const upload_switch& row : STEP_SWITCHES) {
    if (is_enabled(row, settings)) judged.uploads[place] = state_of_step(judged, place);
    ++place;
  }
  for (const upload_switch& row : RAPID_FIRE_SWITCHES) {
    const status_record& record = records[place];
    if (is_listed(row, record, settings)) judged.uploads[place] = state_of(record, at_work.rapid_fire);
    ++place;
  }
  return judged;
}

bool has_run_failed(const judged_status& judged) { return judged.run > run_state::complete; }

bool is_run_wrong(const judged_status& judged, const tolerance& tolerated) {
  const bool is_good = judged.run == run_state::complete ||
                       (judged.run == run_state::going_on && judged.records[RUN_RECORD].failures == 0);
  return !is_good || judged.is_run_in_future || judged.seconds_since_run > tolerated.seconds_since_run;
}

std::uint32_t failures_in_row(const judged_status& judged, std::size_t place) {
  // One that was ended counts in the record when the next begins.
  const bool was_last_ended =
      place == RUN_RECORD ? judged.run == run_state::killed : judged.uploads[place] == upload_state::hung;
  return judged.records[place].failures + (was_last_ended ? 1 : 0);
}

bool is_upload_wrong(const judged_status& judged, std::size_t place, const tolerance& tolerated) {
  switch (judged.uploads[place]) {
    case upload_state::failed:
    case upload_state::hung:
      return failures_in_row(judged, place) >= tolerated.failures;
    case upload_state::unclear:
    case upload_state::not_tried:
      return tolerated.failures == 1;
    default:
      return false;
  }
}

}  // namespace skypost
