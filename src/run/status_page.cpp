#include "run/status_page.h"

#include <fcntl.h>
#include <unistd.h>

#include <csignal>
#include <ctime>
#include <iterator>

#include "base/error_text.h"
#include "base/paths.h"
#include "base/regular_file.h"
#include "live/live_record.h"
#include "run/upload_switch.h"

namespace skypost {
namespace {

using time_text = fixed_text<24>;                      // seconds since the epoch, with three decimals
using escaped_text = fixed_text<4 * REASON_CAPACITY>;  // an escaped character takes four
using line_text = fixed_text<4 * REASON_CAPACITY + 200>;

// The latest upload under one name.
struct upload_memory {
  time_text time;  // when it began or ended
  // Until this upload ends, these describe the previous one.
  int wget_status = NO_WGET_STATUS;
  escaped_text reason;
  unsigned failures = 0;  // consecutive
  time_text last_good;

  line_text line;
};

// The page that this process has opened and locked; -1 if nothing is recorded.
constinit int page = -1;

// The rapid-fire loop itself, then its networks in the order of RAPID_FIRE_SWITCHES.
upload_memory rapid_fire_memory[1 + std::size(RAPID_FIRE_SWITCHES)];

void open_page(const char* path) {
  page = open_sole_file(path_text(path).c_str(), O_RDWR);
  struct flock whole {};
  whole.l_type = F_WRLCK;
  if (page >= 0 && fcntl(page, F_SETLK, &whole) != 0) close_page();
}

void set_to_now(text_buffer& time) {
  timespec now{};
  clock_gettime(CLOCK_REALTIME, &now);
  time.clear();
  time.append("%lld.%03d", static_cast<long long>(now.tv_sec), static_cast<int>(now.tv_nsec / 1'000'000));
}

// A full disk may leave an incomplete line, which readers skip.
void add_line(const upload_memory& memory) {
  [[maybe_unused]] const ssize_t ignored = write(page, memory.line.c_str(), memory.line.length());
}

void write_all_lines() {
  fixed_text<sizeof rapid_fire_memory> text;
  for (const upload_memory& memory : rapid_fire_memory) text.append_text(memory.line.view());
  const ssize_t written = pwrite(page, text.c_str(), text.length(), 0);
  // Only after the write: a reader must not find the page empty.
  [[maybe_unused]] const int ignored = written < 0 ? 0 : ftruncate(page, written);
}

void record(upload_memory& memory, const char* name, status_outcome outcome, bool in_rapid_fire) {
  text_buffer& line = memory.line;
  line.clear();
  line.append("%s\t%s\t%s\t", memory.time.c_str(), name, OUTCOME_NAMES[static_cast<int>(outcome)]);
  if (memory.wget_status != NO_WGET_STATUS) line.append("%d", memory.wget_status);
  line.append("\t%s", memory.reason.c_str());
  if (in_rapid_fire) line.append("\t%u\t%s", memory.failures, memory.last_good.c_str());
  line.append_text("\n");
  if (in_rapid_fire)
    write_all_lines();
  else
    add_line(memory);
}

void record_run(status_outcome outcome) {
  if (page < 0) return;
  upload_memory run;
  set_to_now(run.time);
  record(run, PROCESS_NAME, outcome, false);
}

// SIGALRM's handler, which is gone once it is called. What it calls neither locks nor allocates, in glibc and in musl:
// append() formats nothing but texts and two integers.
void end_run_by_alarm(int) {
  record_run(status_outcome::timed_out);
  raise(SIGALRM);
}

void record_alarm() {
  struct sigaction action {};
  action.sa_handler = end_run_by_alarm;
  action.sa_flags = static_cast<int>(SA_RESETHAND | SA_NODEFER);
  if (page >= 0) sigaction(SIGALRM, &action, nullptr);
}

// Returns the outcome.
status_outcome note_result(upload_memory& memory, int result) {
  set_to_now(memory.time);
  memory.wget_status = latest_exchange.wget_status;
  memory.reason.clear();
  if (result != 0) {
    ++memory.failures;
    if (!latest_exchange.is_command_quoted) append_escaped(memory.reason, error_text.view());
    return status_outcome::failed;
  }
  memory.failures = 0;
  append_escaped(memory.reason, latest_exchange.doubt);
  if (!memory.reason.empty()) return status_outcome::unclear;
  memory.last_good.clear();
  memory.last_good.append_text(memory.time.view());
  return status_outcome::good;
}

int send_recorded(const char* name, const upload& upload, upload_memory& memory, bool in_rapid_fire) {
  latest_exchange = {};
  // With stale data nothing is sent, so there is no success or failure to record.
  if (page < 0 || live_data_stale != 0) return upload.send();
  set_to_now(memory.time);
  record(memory, name, status_outcome::begun, in_rapid_fire);
  const int result = upload.send();
  record(memory, name, note_result(memory, result), in_rapid_fire);
  return result;
}

}  // namespace

void append_escaped(text_buffer& text, std::string_view reason) {
  for (const char character : head_of(reason, REASON_CAPACITY)) {
    if (character >= ' ' && character <= '~' && character != '\\')
      text.append_character(character);
    else
      text.append("\\x%02X", static_cast<unsigned>(static_cast<unsigned char>(character)));
  }
}

void begin_run_page() {
  open_page(STATUS_PATH);
  if (page >= 0 && ftruncate(page, 0) != 0) close_page();
  record_run(status_outcome::begun);
  record_alarm();
}

void end_run_page(status_outcome outcome) {
  record_run(outcome);
  close_page();
}

void open_rapid_fire_page() {
  open_page(RAPID_FIRE_STATUS_PATH);
  upload_memory& loop = rapid_fire_memory[0];
  if (page < 0 || !loop.time.empty()) return;
  set_to_now(loop.time);
  record(loop, PROCESS_NAME, status_outcome::begun, true);
}

void close_page() {
  if (page >= 0) close(page);
  page = -1;
}

int send_in_run(const char* name, const upload& upload) {
  upload_memory memory;
  return send_recorded(name, upload, memory, false);
}

int send_in_rapid_fire(std::size_t network, const upload& upload) {
  return send_recorded(RAPID_FIRE_SWITCHES[network].name.text, upload, rapid_fire_memory[1 + network], true);
}

}  // namespace skypost
