#include "run/status_writer.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <ctime>
#include <limits>

#include "base/error_text.h"
#include "live/live_record.h"

namespace skypost {
namespace {

// The open file, -1 if there is none, and its content as this process knows it: nobody else writes the records that it
// writes.
constinit int status_file = -1;
status_image status;

// No error counts: what a full disk leaves is found, and started anew, by the next run.
void write_part(const void* part, std::size_t size) {
  const std::ptrdiff_t place = static_cast<const char*>(part) - reinterpret_cast<const char*>(&status);
  [[maybe_unused]] const ssize_t ignored = pwrite(status_file, part, size, place);
}

void start_anew() {
  write_part(&status, sizeof status);
  [[maybe_unused]] const int ignored = ftruncate(status_file, sizeof status);
}

void open_for(status_keeper keeper) {
  std::int64_t size = 0;
  status_file = open_status_file(O_RDWR, size);
  if (status_file < 0) return;
  if (!lock_status(status_file, keeper))
    close_status();
  else if (!read_status(status_file, size, status))
    start_anew();
}

// Never 0, which stands for never.
std::int64_t seconds_now() { return std::max<std::int64_t>(std::time(nullptr), 1); }

void count_failure(status_record& record) {
  if (record.failures < std::numeric_limits<std::uint32_t>::max()) record.failures = record.failures + 1;
}

void record_begin(status_record& record, std::uint32_t run_number) {
  if (is_unfinished(record)) count_failure(record);
  record.begun = seconds_now();
  record.ended = 0;
  record.outcome = static_cast<std::uint32_t>(status_outcome::open);
  record.run_number = run_number;
  write_part(&record, sizeof record);
}

void record_end(status_record& record, status_outcome outcome, int wget_status, std::string_view reason) {
  record.ended = seconds_now();
  record.outcome = static_cast<std::uint32_t>(outcome);
  record.wget_status = wget_status;
  std::memset(record.reason, 0, sizeof record.reason);
  if (outcome == status_outcome::good) {
    record.last_good = record.ended;
    record.failures = 0;
  } else {
    count_failure(record);
    std::copy_n(reason.begin(), std::min(reason.size(), sizeof record.reason), record.reason);
  }
  write_part(&record, sizeof record);
}

status_record& record_called(const char* name) {
  status_record* record = status.records;
  while (std::strncmp(record->name, name, sizeof record->name) != 0) ++record;
  return *record;
}

}  // namespace

void begin_run_status() {
  open_for(status_keeper::run);
  if (status_file < 0) return;
  status_record& run = status.records[RUN_RECORD];
  record_begin(run, run.run_number + 1);
}

void end_run_status(status_outcome outcome) {
  if (status_file < 0) return;
  record_end(status.records[RUN_RECORD], outcome, NO_WGET_STATUS, {});
  close_status();
}

void open_rapid_fire_status() { open_for(status_keeper::rapid_fire); }

void close_status() {
  if (status_file < 0) return;
  close(status_file);
  status_file = -1;
}

int send_recorded(const upload_switch& row, const upload& upload) {
  // Of stale data an upload sends nothing, and neither succeeds nor fails.
  if (status_file < 0 || live_data_stale != 0) return upload.send();

  status_record& record = record_called(row.name.text);
  record_begin(record, status.records[RUN_RECORD].run_number);
  latest_exchange = {};
  const int result = upload.send();
  const bool has_reason = result != 0 && !latest_exchange.is_command_quoted;
  record_end(record, result == 0 ? status_outcome::good : status_outcome::failed, latest_exchange.wget_status,
             has_reason ? error_text.view() : std::string_view());
  return result;
}

}  // namespace skypost
