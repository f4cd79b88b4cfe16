#include "status/status_text.h"

#include <algorithm>
#include <cstring>
#include <ctime>

#include "base/moment.h"
#include "base/text.h"
#include "common/secrets.h"
#include "common/wget_status.h"

namespace skypost {
namespace {

// Indexed by run_state. "%s" is the upload that the run had begun.
constexpr const char* RUN_ENDS[] = {
    "",
    "",
    "it came to its end",
    "the data server could not be read",
    "the station's outdoor values were not current, so nothing was sent",
    "it was ended by its alarm in %s",
    "it was ended by its alarm in the alarm script, called for %s",
    "it was ended from outside after %s",
};

// Indexed by upload_state.
struct state_words {
  const char* name;
  const char* colour;
  const char* reason;
};
constexpr state_words STATES[] = {
    // clang-format off
    {"",              "",           ""},
    {"not tried yet", "\033[33m",   ""},
    {"good",          "\033[32m",   ""},
    {"unclear",       "\033[33m",   nullptr},  // the record has it
    {"failed",        "\033[1;31m", nullptr},
    {"hung",          "\033[1;31m", "it was ended before it was done"},
    {"no turn",       "\033[33m",   "the run was ended before its turn"},
    // clang-format on
};
constexpr char COLOUR_END[] = "\033[0m";

constexpr int STATE_WIDTH = 13;
constexpr int TIME_WIDTH = 19;
constexpr std::size_t LEAST_NAME_WIDTH = 15;

using line_text = fixed_text<400>;

void append_time(text_buffer& text, std::int64_t milliseconds) {
  const std::tm local = moment_at(milliseconds / 1'000).local;
  if (local.tm_mday == 0 || local.tm_year > 9'999 - 1'900) {
    text.append_text("?");
    return;
  }
  char digits[TIME_WIDTH + 1];
  text.append_text({digits, std::strftime(digits, sizeof digits, "%Y-%m-%d %H:%M:%S", &local)});
}

void append_age(text_buffer& text, std::int64_t seconds) {
  const bool in_days = seconds >= 2 * 86'400;
  const long long count = seconds / (in_days ? 86'400 : 3'600);
  text.append("%lld %s%s ago", count, in_days ? "day" : "hour", count == 1 ? "" : "s");
}

void append_end(text_buffer& text, const judged_status& judged) {
  const status_record& run = judged.records[RUN_RECORD];
  if (!is_unfinished(run) && run.time >= run.page)
    text.append(", %lld s", static_cast<long long>(run.time / 1'000 - run.page / 1'000));
  text.append_text("; ");
  const bool is_before_first = judged.run == run_state::ended_otherwise && judged.last_begun == RUN_RECORD;
  if (is_before_first)
    text.append_text("it was ended from outside before the first upload");
  else
    text.append_pattern(RUN_ENDS[static_cast<int>(judged.run)], RECORD_NAMES[judged.last_begun]);
}

void append_run(text_buffer& text, const judged_status& judged) {
  if (judged.run == run_state::never_begun) {
    text.append_text("No run yet.");
    return;
  }
  const bool is_going_on = judged.run == run_state::going_on;
  text.append_text(is_going_on ? "A run has been going on since " : "Last run: ");
  append_time(text, judged.records[RUN_RECORD].page);
  if (!is_going_on) append_end(text, judged);
  text.append_text(".");
  if (judged.is_run_in_future) text.append_text(" That is in the future: was the clock set back?");
  if (judged.seconds_since_run <= LONGEST_WITHOUT_A_RUN) return;
  text.append_text(" That was ");
  append_age(text, judged.seconds_since_run);
  text.append_text(is_going_on ? "." : ": is skypost still started?");
}

bool is_printable(char character) { return character >= ' ' && character <= '~'; }

// A server's own text must not command the terminal.
void make_printable(text_buffer& text) {
  char* const bytes = text.storage();
  std::size_t length = text.length();
  // Some texts end with a separator.
  while (length > 0 && std::strchr(" ,\n", bytes[length - 1]) != nullptr) --length;
  text.set_length(length);
  std::replace_if(
      bytes, bytes + length, [](char character) { return !is_printable(character); }, '?');
}

void append_failure(text_buffer& text, const status_record& record, const settings_record& settings) {
  // One character less, so that a reason which was cut counts as cut here too.
  fixed_text<REASON_CAPACITY - 1> reason;
  reason.append_text(record.reason);
  hide_secrets(reason, settings);
  make_printable(reason);
  const char* const meaning = wget_status_meaning(record.wget_status);
  if (meaning != nullptr) text.append("%s%s", meaning, reason.empty() ? "" : "; ");
  text.append_text(reason.view());
  if (!text.empty()) return;
  // An upload that was killed has no reason; while the next is under way, it shows as failed.
  text.append_text(is_unfinished(record) ? "it is being tried again" : "its command could not be run");
}

std::size_t name_width(const judged_status& judged) {
  std::size_t width = LEAST_NAME_WIDTH;
  for (std::size_t i = 0; i < STATUS_RECORDS; ++i)
    if (judged.uploads[i] != upload_state::not_listed) width = std::max(width, std::strlen(RECORD_NAMES[i]));
  return width;
}

void print_upload(std::FILE* out, const char* name, const status_record& record, upload_state state,
                  int width, const settings_record& settings, bool in_colour) {
  const state_words& words = STATES[static_cast<int>(state)];
  fixed_text<TIME_WIDTH> last_good;
  if (record.last_good == 0)
    last_good.append_text("never");
  else
    append_time(last_good, record.last_good);
  line_text reason;
  if (words.reason != nullptr)
    reason.append_text(words.reason);
  else
    append_failure(reason, record, settings);
  // One that was ended counts as a failure when the next begins.
  const long long failures = record.failures + (state == upload_state::hung ? 1LL : 0LL);

  std::fprintf(out, "%-*s  %s%s%s%*s  %-*s  %8lld%s%s\n", width, name, in_colour ? words.colour : "",
               words.name, in_colour ? COLOUR_END : "",
               STATE_WIDTH - static_cast<int>(std::strlen(words.name)), "", TIME_WIDTH, last_good.c_str(),
               failures, reason.empty() ? "" : "  ", reason.c_str());
}

}  // namespace

void print_status(std::FILE* out, const judged_status& judged, const settings_record& settings,
                  bool in_colour) {
  line_text run;
  append_run(run, judged);
  std::fprintf(out, "%s\n", run.c_str());

  const bool is_any_listed =
      std::any_of(std::begin(judged.uploads), std::end(judged.uploads),
                  [](upload_state state) { return state != upload_state::not_listed; });
  if (!is_any_listed) {
    std::fputs("No network is switched on.\n", out);
    return;
  }
  const int width = static_cast<int>(name_width(judged));
  std::fprintf(out, "%-*s  %-*s  %-*s  failures  reason\n", width, "network", STATE_WIDTH, "state",
               TIME_WIDTH, "last good upload");
  for (std::size_t i = 0; i < STATUS_RECORDS; ++i)
    if (judged.uploads[i] != upload_state::not_listed)
      print_upload(out, RECORD_NAMES[i], judged.records[i], judged.uploads[i], width, settings, in_colour);
}

}  // namespace skypost
