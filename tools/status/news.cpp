#include "status/news.h"

#include <cstdlib>
#include <cstring>

#include "status/words.h"

namespace skypost {
namespace {

constexpr std::uint32_t FAILURES_WORTH_TELLING = 2;
constexpr std::int64_t DAY = 86'400'000;  // in milliseconds

// The clock may have been set back since.
bool is_due(const status_record& record, std::uint32_t failures, std::int64_t now) {
  return failures >= FAILURES_WORTH_TELLING && (record.told == 0 || std::abs(now - record.told) >= DAY);
}

void append_failure(text_buffer& news, const char* name, const status_record& record, std::uint32_t failures,
                    const text_buffer& reason) {
  news.append("%s has failed ", name);
  if (failures == FAILURES_WORTH_TELLING) {
    news.append_text("twice in a row");
  } else {
    news.append("%u times in a row, since ", failures);
    append_time(news, record.failing_since);
  }
  news.append(": %s\n", reason.c_str());
}

void forget(status_record& record) {
  record.told = 0;
  record.failing_since = 0;
}

void append_recovery(text_buffer& news, const char* name, status_record& record) {
  news.append("%s works again; it had failed since ", name);
  append_time(news, record.failing_since);
  fixed_text<REASON_CAPACITY> told;
  told.append_text(record.reason);
  make_printable(told);
  news.append("%s%s\n", told.empty() ? "" : ": ", told.c_str());
  forget(record);
}

void append_run(text_buffer& news, status_record& run, const judged_status& judged, std::int64_t now) {
  const std::uint32_t failures = failures_in_row(judged, RUN_RECORD);
  if (has_run_failed(judged) && is_due(run, failures, now)) {
    fixed_text<REASON_CAPACITY> end;
    append_run_end(end, judged);
    append_failure(news, "the run", run, failures, end);
    std::memcpy(run.reason, end.c_str(), end.length() + 1);
    run.told = now;
  } else if (judged.run == run_state::complete && run.told != 0) {
    append_recovery(news, "the run", run);
  }
}

void append_upload(text_buffer& news, status_record& record, const judged_status& judged, std::size_t place,
                   const settings_record& settings, std::int64_t now) {
  const upload_state state = judged.uploads[place];
  const std::uint32_t failures = failures_in_row(judged, place);
  if (state == upload_state::failed && is_due(record, failures, now)) {
    fixed_text<LONGEST_REASON> reason;
    append_reason(reason, judged, place, settings);
    append_failure(news, RECORD_NAMES[place], record, failures, reason);
    record.told = now;
  } else if (state == upload_state::good && record.told != 0) {
    append_recovery(news, RECORD_NAMES[place], record);
  } else if (state == upload_state::not_listed) {
    forget(record);
  }
}

}  // namespace

void append_news(text_buffer& news, status_records& records, const judged_status& judged,
                 const settings_record& settings, std::int64_t now) {
  append_run(news, records[RUN_RECORD], judged, now);
  for (std::size_t i = FIRST_STEP_RECORD; i < STATUS_RECORDS; ++i)
    append_upload(news, records[i], judged, i, settings, now);
}

}  // namespace skypost
