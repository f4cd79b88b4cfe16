#include "status/history.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cstring>

#include "base/paths.h"
#include "base/regular_file.h"
#include "status/status_line.h"

namespace skypost {
namespace {

constinit int history = -1;
constinit bool may_write = false;

// Holds each file in turn; larger than any that skypost or this program writes.
char bytes[65'536];
text_buffer content{bytes};

struct flock whole_file() {
  struct flock whole {};
  whole.l_type = F_WRLCK;
  return whole;
}

bool is_at_work(int page) {
  struct flock whole = whole_file();
  return page >= 0 && fcntl(page, F_GETLK, &whole) == 0 && whole.l_type != F_UNLCK;
}

void read_content(int file) {
  content.clear();
  ssize_t count = 0;
  do {
    content.set_length(content.length() + static_cast<std::size_t>(count));
    count = pread(file, content.storage() + content.length(), content.capacity() - content.length(),
                  static_cast<off_t>(content.length()));
  } while (count > 0);
}

// Takes the next valid line from `text`. Returns false if there is none. Text after the last line feed is an unfinished
// line, which is skipped.
bool take_line(std::string_view& text, std::size_t& place, status_record& record) {
  for (;;) {
    const std::size_t end = text.find('\n');
    if (end == std::string_view::npos) return false;
    const std::string_view line = head_of(text, end);
    text = tail_of(text, end + 1);
    if (read_line(line, place, record)) return true;
  }
}

// A line out of order is left over from a longer text that is being replaced: stop there.
void read_history(status_records& records) {
  std::string_view text = content.view();
  std::size_t place = 0, next = 0;
  for (status_record record; take_line(text, place, record) && place >= next; next = place + 1)
    records[place] = record;
}

// Adding the same line again changes nothing: the failures that a page has reported are replaced.
void add_line(status_record& known, status_record line, std::int64_t page) {
  std::uint32_t earlier = known.failures;
  const bool was_ended = known.page != page && is_unfinished(known);
  if (known.page == page)
    earlier -= std::min(earlier, known.failures_in_page);
  else if (was_ended)
    ++earlier;
  line.page = page;
  line.failures_in_page = line.failures;
  if (is_unfinished(line) && line.failures == 0 && line.last_good == 0) {
    line.wget_status = known.wget_status;
    std::memcpy(line.reason, known.reason, sizeof line.reason);
  }
  if (line.last_good == 0) {
    if (line.outcome != status_outcome::unclear) line.failures += earlier;
    line.last_good = known.last_good;
  }
  line.told = known.told;
  if (line.told != 0 || known.failing_since > line.last_good) line.failing_since = known.failing_since;
  if (line.failing_since == 0 && line.failures > 0) line.failing_since = was_ended ? known.time : line.time;
  known = line;
}

// A run's lines have no counts. Derive them from the outcome, since a run makes each upload once.
void add_run_page(status_records& records) {
  std::string_view text = content.view();
  std::size_t place = 0;
  status_record line;
  if (!take_line(text, place, line) || place != RUN_RECORD) return;
  const std::int64_t start = line.time;
  do {
    line.failures = line.outcome > status_outcome::unclear ? 1 : 0;
    line.last_good = line.outcome == status_outcome::good ? line.time : 0;
    if (place == RUN_RECORD) std::memcpy(line.reason, records[place].reason, sizeof line.reason);
    if (place < FIRST_RAPID_FIRE_RECORD) add_line(records[place], line, start);
  } while (take_line(text, place, line));
}

void add_rapid_fire_page(status_records& records) {
  std::string_view text = content.view();
  std::size_t place = 0;
  status_record line;
  if (!take_line(text, place, line) || place != RUN_RECORD) return;
  const std::int64_t start = line.time;
  for (std::size_t next = FIRST_RAPID_FIRE_RECORD; take_line(text, place, line) && place >= next;
       next = place + 1)
    add_line(records[place], line, start);
}

// Reads a page into `content`. Returns true if another process has it locked. Checks the lock before and after reading, so
// an upload that begins or ends meanwhile is not taken for one that was killed.
bool read_page(int page) {
  const bool is_locked = is_at_work(page);
  read_content(page);
  return is_at_work(page) || is_locked;
}

// Opens the history, and creates it if it is missing. It is this process's to write if no other one has it locked.
void open_history() {
  const path_text path(HISTORY_PATH);
  umask(S_IRWXG | S_IRWXO);  // a reason may quote a password
  history = open_sole_file(path.c_str(), O_RDWR | O_CREAT);
  struct flock whole = whole_file();
  may_write = history >= 0 && fcntl(history, F_SETLK, &whole) == 0;
}

}  // namespace

int read_status(status_records& records, status_at_work& at_work) {
  const int run_page = open_sole_file(path_text(STATUS_PATH).c_str(), O_RDONLY);
  if (run_page < 0) return -1;
  const int rapid_fire_page = open_sole_file(path_text(RAPID_FIRE_STATUS_PATH).c_str(), O_RDONLY);
  open_history();
  read_content(history);
  read_history(records);
  at_work.run = read_page(run_page);
  add_run_page(records);
  at_work.rapid_fire = read_page(rapid_fire_page);
  add_rapid_fire_page(records);
  close(rapid_fire_page);
  close(run_page);
  return 0;
}

int keep_status(const status_records& records) {
  if (!may_write) return -1;
  may_write = false;
  content.clear();
  for (std::size_t place = 0; place < STATUS_RECORDS; ++place)
    if (records[place].time != 0) append_line(content, place, records[place]);
  return replace_content(history, path_text(HISTORY_PATH).c_str(), content.view());
}

}  // namespace skypost
