#include "status/words.h"

#include <algorithm>
#include <cstring>
#include <ctime>

#include "base/moment.h"
#include "common/secrets.h"
#include "common/wget_status.h"

namespace skypost {
namespace {

// Indexed by run_state.
constexpr const char* RUN_ENDS[] = {
    "",
    "",
    "it came to its end",
    "the data server could not be read",
    "the station's outdoor values were not current, so nothing was sent",
    "it timed out",
    "it was killed or crashed",
};

// Indexed by upload_state.
constexpr const char* STATE_NAMES[] = {"", "not tried yet", "good", "unclear", "failed", "hung", "no turn"};

// wget's exit status if the server's answer was an error, such as 404.
constexpr int ERROR_ANSWER = 8;

bool is_printable(char character) { return character >= ' ' && character <= '~'; }

void append_recorded_reason(text_buffer& text, const status_record& record, const settings_record& settings) {
  // One character less, so that a reason which was cut counts as cut here too.
  fixed_text<REASON_CAPACITY - 1> reason;
  reason.append_text(record.reason);
  // wget writes nothing of such an answer, which the alarm script calls no response.
  if (record.wget_status == ERROR_ANSWER && reason.view().starts_with("no response from ")) reason.clear();
  hide_secrets(reason, settings);
  make_printable(reason);
  const char* const meaning = wget_status_meaning(record.wget_status);
  if (meaning != nullptr) text.append("%s%s", meaning, reason.empty() ? "" : "; ");
  text.append_text(reason.view());
  if (meaning != nullptr || !reason.empty()) return;
  // An upload that was killed has no reason; while the next is under way, it shows as failed.
  text.append_text(is_unfinished(record) ? "it is being tried again" : "its command could not be run");
}

}  // namespace

void make_printable(text_buffer& text) {
  char* const bytes = text.storage();
  std::size_t length = text.length();
  // Some texts end with a separator.
  while (length > 0 && std::strchr(" ,\n", bytes[length - 1]) != nullptr) --length;
  text.set_length(length);
  std::replace_if(
      bytes, bytes + length, [](char character) { return !is_printable(character); }, '?');
}

void append_time(text_buffer& text, std::int64_t milliseconds) {
  const std::tm local = moment_at(milliseconds / 1'000).local;
  if (local.tm_mday == 0 || local.tm_year > 9'999 - 1'900) {
    text.append_text("?");
    return;
  }
  char digits[sizeof "2026-11-25 09:15:21"];
  text.append_text({digits, std::strftime(digits, sizeof digits, "%Y-%m-%d %H:%M:%S", &local)});
}

void append_age(text_buffer& text, std::int64_t seconds) {
  const bool in_days = seconds >= 2 * 86'400;
  const bool in_hours = seconds >= 3'600;
  const long long count = seconds / (in_days ? 86'400 : in_hours ? 3'600 : 60);
  const char* const unit = in_days ? "day" : in_hours ? "hour" : "minute";
  text.append("%lld %s%s ago", count, unit, count == 1 ? "" : "s");
}

void append_run_end(text_buffer& text, const judged_status& judged) {
  text.append_text(RUN_ENDS[static_cast<int>(judged.run)]);
  if (judged.run < run_state::timed_out) return;
  const status_record& last = judged.records[judged.last_begun];
  const char* const name = RECORD_NAMES[judged.last_begun];
  if (judged.last_begun == RUN_RECORD)
    text.append_text(" before the first upload");
  else if (is_unfinished(last))
    text.append(" in %s", name);
  else if (last.outcome == status_outcome::failed)
    text.append(" in the alarm script, called for %s", name);
  else
    text.append(" after %s", name);
}

const char* state_name(upload_state state) { return STATE_NAMES[static_cast<int>(state)]; }

void append_reason(text_buffer& text, const judged_status& judged, std::size_t place,
                   const settings_record& settings) {
  switch (judged.uploads[place]) {
    case upload_state::unclear:
    case upload_state::failed:
      append_recorded_reason(text, judged.records[place], settings);
      break;
    case upload_state::hung:
      text.append_text(judged.run == run_state::timed_out && place == judged.last_begun
                           ? "it timed out"
                           : "it was ended before it was done");
      break;
    case upload_state::no_turn:
      text.append_text("the run was ended before its turn");
      break;
    default:
      break;
  }
}

}  // namespace skypost
