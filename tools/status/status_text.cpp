#include "status/status_text.h"

#include <algorithm>
#include <cstring>

#include "status/words.h"

namespace skypost {
namespace {

// Indexed by upload_state.
constexpr const char* COLOURS[] = {"",           "\033[33m",   "\033[32m", "\033[33m",
                                   "\033[1;31m", "\033[1;31m", "\033[33m"};
constexpr char COLOUR_END[] = "\033[0m";

constexpr int STATE_WIDTH = 13;
constexpr int TIME_WIDTH = 19;
constexpr std::size_t LEAST_NAME_WIDTH = 15;
// On a narrower terminal, reasons have lines of their own.
constexpr int LEAST_WIDTH_FOR_REASONS = 120;
constexpr int INDENT = 4;

using line_text = fixed_text<LONGEST_REASON>;

// Prints a text on lines that end between words.
void print_wrapped(const screen& to, std::string_view text, int indent) {
  const std::size_t width =
      to.columns == 0 ? text.size() : static_cast<std::size_t>(std::max(to.columns - indent, 20));
  do {
    std::size_t length = text.size();
    if (length > width) length = std::min(text.rfind(' ', width), text.find(' ', width));
    const std::string_view line = head_of(text, length);
    std::fprintf(to.out, "%*s%.*s\n", indent, "", static_cast<int>(line.size()), line.data());
    text = tail_of(text, line.size() + 1);
  } while (!text.empty());
}

void append_time_or(text_buffer& text, std::int64_t time, const char* none) {
  if (time == 0)
    text.append_text(none);
  else
    append_time(text, time);
}

void append_run(text_buffer& text, const judged_status& judged, const tolerance& tolerated) {
  if (judged.run == run_state::never_begun) {
    text.append_text("No run yet.");
    return;
  }
  const status_record& run = judged.records[RUN_RECORD];
  const bool is_going_on = judged.run == run_state::going_on;
  text.append_text(is_going_on ? "A run has been going on since " : "Last run: ");
  append_time(text, run.page);
  if (!is_unfinished(run) && run.time >= run.page)
    text.append(", %lld s", static_cast<long long>(run.time / 1'000 - run.page / 1'000));
  if (!is_going_on) text.append_text("; ");
  append_run_end(text, judged);
  text.append_text(".");
  if (judged.is_run_in_future) text.append_text(" That is in the future: was the clock set back?");
  if (judged.seconds_since_run <= tolerated.seconds_since_run) return;
  text.append_text(" That was ");
  append_age(text, judged.seconds_since_run);
  text.append_text(is_going_on ? "." : ": is skypost still started?");
}

std::size_t name_width(const judged_status& judged) {
  std::size_t width = LEAST_NAME_WIDTH;
  for (std::size_t i = 0; i < STATUS_RECORDS; ++i)
    if (judged.uploads[i] != upload_state::not_listed) width = std::max(width, std::strlen(RECORD_NAMES[i]));
  return width;
}

void print_row(const screen& to, const judged_status& judged, std::size_t place, int width,
               const settings_record& settings) {
  const upload_state state = judged.uploads[place];
  const char* const name = state_name(state);
  fixed_text<TIME_WIDTH> last_good;
  append_time_or(last_good, judged.records[place].last_good, "never");
  line_text reason;
  append_reason(reason, judged, place, settings);

  std::fprintf(to.out, "%-*s  %s%s%s%*s  %-*s  %8u", width, RECORD_NAMES[place],
               to.in_colour ? COLOURS[static_cast<int>(state)] : "", name, to.in_colour ? COLOUR_END : "",
               STATE_WIDTH - static_cast<int>(std::strlen(name)), "", TIME_WIDTH, last_good.c_str(),
               failures_in_row(judged, place));
  const bool is_narrow = to.columns > 0 && to.columns < LEAST_WIDTH_FOR_REASONS;
  if (!reason.empty() && !is_narrow) std::fprintf(to.out, "  %s", reason.c_str());
  std::fputc('\n', to.out);
  if (!reason.empty() && is_narrow) print_wrapped(to, reason.view(), INDENT);
}

void print_fact(const screen& to, const char* what, const text_buffer& fact) {
  if (!fact.empty()) std::fprintf(to.out, "%*s%-19s  %s\n", INDENT, "", what, fact.c_str());
}

void print_time(const screen& to, const char* what, std::int64_t time) {
  fixed_text<TIME_WIDTH> text;
  append_time_or(text, time, "never");
  print_fact(to, what, text);
}

}  // namespace

void print_status(const screen& to, const judged_status& judged, const settings_record& settings,
                  const tolerance& tolerated) {
  line_text run;
  append_run(run, judged, tolerated);
  print_wrapped(to, run.view(), 0);

  const bool is_any_listed =
      std::any_of(std::begin(judged.uploads), std::end(judged.uploads),
                  [](upload_state state) { return state != upload_state::not_listed; });
  if (!is_any_listed) {
    std::fputs("No network is switched on.\n", to.out);
    return;
  }
  const int width = static_cast<int>(name_width(judged));
  const bool is_narrow = to.columns > 0 && to.columns < LEAST_WIDTH_FOR_REASONS;
  std::fprintf(to.out, "%-*s  %-*s  %-*s  failures%s\n", width, "network", STATE_WIDTH, "state", TIME_WIDTH,
               "last good upload", is_narrow ? "" : "  reason");
  for (std::size_t i = 0; i < STATUS_RECORDS; ++i)
    if (judged.uploads[i] != upload_state::not_listed) print_row(to, judged, i, width, settings);
}

void print_upload(const screen& to, const judged_status& judged, std::size_t place,
                  const settings_record& settings) {
  const status_record& record = judged.records[place];
  const char* const state = state_name(judged.uploads[place]);
  std::fprintf(to.out, "%s: %s\n", RECORD_NAMES[place], *state == '\0' ? "switched off" : state);
  print_time(to, is_unfinished(record) ? "last upload began" : "last upload", record.time);
  print_time(to, "last good upload", record.last_good);
  line_text fact;
  fact.append("%u in a row", failures_in_row(judged, place));
  print_fact(to, "failures", fact);
  if (record.failing_since != 0) print_time(to, "failing since", record.failing_since);
  if (record.told != 0) print_time(to, "told", record.told);
  if (record.wget_status != NO_WGET_STATUS) {
    fact.clear();
    fact.append("%d", record.wget_status);
    print_fact(to, "exit status of wget", fact);
  }
  fixed_text<40 + LONGEST_REASON> reason;
  reason.append("%-19s  ", "reason");
  append_reason(reason, judged, place, settings);
  if (*state != '\0' && judged.uploads[place] != upload_state::good) print_wrapped(to, reason.view(), INDENT);
}

}  // namespace skypost
