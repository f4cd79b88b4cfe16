#include "status/status_line.h"

#include <algorithm>
#include <charconv>

namespace skypost {
namespace {

constexpr std::size_t COLUMNS = 11;
constexpr std::uint32_t HIGHEST_EXIT_STATUS = 255;
constexpr std::size_t LONGEST_NAME = 100;
constexpr std::size_t LONGEST_TIME = 16;  // its milliseconds fit into 64 bits
constexpr std::size_t DECIMALS = 3;
constexpr std::size_t ESCAPE_LENGTH = 4;

consteval bool names_fit() {
  for (std::size_t i = 0; i < STATUS_RECORDS; ++i) {
    const std::string_view name = RECORD_NAMES[i];
    if (name.size() > LONGEST_NAME) return false;
    for (std::size_t j = 0; j < i; ++j)
      if (name == RECORD_NAMES[j]) return false;
  }
  return true;
}
static_assert(names_fit(), "run_list.def has a name twice, or one that is too long for a line");

// Returns false if there are too many columns.
bool split(std::string_view line, std::string_view (&columns)[COLUMNS]) {
  for (std::string_view& column : columns) {
    const std::size_t end = line.find('\t');
    column = head_of(line, end);
    if (end == std::string_view::npos) return true;
    line = tail_of(line, end + 1);
  }
  return false;
}

// Sets `number` unless the text is empty. Returns false if the text is neither empty nor a number.
template <typename integer>
bool read_number(std::string_view text, integer& number) {
  const char* const end = text.data() + text.size();
  const std::from_chars_result result = std::from_chars(text.data(), end, number);
  return text.empty() || (result.ec == std::errc() && result.ptr == end);
}

bool read_time(std::string_view text, std::int64_t& time) {
  if (text.empty()) return true;
  if (text.size() < DECIMALS + 2 || text.size() > LONGEST_TIME) return false;
  const std::size_t point = text.size() - DECIMALS - 1;
  std::uint32_t milliseconds = 0;
  std::uint64_t seconds = 0;
  if (text[point] != '.' || !read_number(head_of(text, point), seconds) ||
      !read_number(tail_of(text, point + 1), milliseconds))
    return false;
  time = static_cast<std::int64_t>(seconds * 1'000 + milliseconds);
  return true;
}

bool read_wget_status(std::string_view text, int& wget_status) {
  std::uint32_t number = 0;
  if (!read_number(text, number) || number > HIGHEST_EXIT_STATUS) return false;
  wget_status = text.empty() ? NO_WGET_STATUS : static_cast<int>(number);
  return true;
}

bool read_place(std::string_view text, std::size_t& place) {
  for (place = 0; place < STATUS_RECORDS; ++place)
    if (text == RECORD_NAMES[place]) return true;
  return false;
}

bool read_outcome(std::string_view text, status_outcome& outcome) {
  const auto found = std::find(std::begin(OUTCOME_NAMES), std::end(OUTCOME_NAMES), text);
  outcome = static_cast<status_outcome>(found - std::begin(OUTCOME_NAMES));
  return found != std::end(OUTCOME_NAMES);
}

// Sets `character` if the text begins with an escape, "\\x" and two hexadecimal digits.
bool read_escape(std::string_view text, char& character) {
  if (text.size() < ESCAPE_LENGTH || head_of(text, 2) != "\\x") return false;
  std::uint8_t number = 0;
  const char* const end = text.data() + ESCAPE_LENGTH;
  if (std::from_chars(text.data() + 2, end, number, 16).ptr != end) return false;
  character = static_cast<char>(number);
  return true;
}

void read_reason(std::string_view text, char (&reason)[REASON_CAPACITY + 1]) {
  std::size_t length = 0;
  while (!text.empty() && length < REASON_CAPACITY) {
    reason[length] = text.front();
    text = tail_of(text, read_escape(text, reason[length]) ? ESCAPE_LENGTH : 1);
    ++length;
  }
  reason[length] = '\0';
}

void append_time(text_buffer& text, std::int64_t time) {
  if (time != 0)
    text.append("%lld.%03lld", static_cast<long long>(time / 1'000), static_cast<long long>(time % 1'000));
}

}  // namespace

bool read_line(std::string_view line, std::size_t& place, status_record& record) {
  std::string_view columns[COLUMNS];
  record = {};
  if (!split(line, columns)) return false;
  read_reason(columns[4], record.reason);
  return read_time(columns[0], record.time) && record.time != 0 &&  //
         read_place(columns[1], place) &&                           //
         read_outcome(columns[2], record.outcome) &&                //
         read_wget_status(columns[3], record.wget_status) &&        //
         read_number(columns[5], record.failures) &&                //
         read_time(columns[6], record.last_good) &&                 //
         read_time(columns[7], record.page) &&                      //
         read_number(columns[8], record.failures_in_page) &&        //
         read_time(columns[9], record.failing_since) &&             //
         read_time(columns[10], record.told);
}

void append_line(text_buffer& text, std::size_t place, const status_record& record) {
  append_time(text, record.time);
  text.append("\t%s\t%s\t", RECORD_NAMES[place], OUTCOME_NAMES[static_cast<int>(record.outcome)]);
  if (record.wget_status != NO_WGET_STATUS) text.append("%d", record.wget_status);
  text.append_text("\t");
  append_escaped(text, record.reason);
  text.append("\t%u\t", record.failures);
  append_time(text, record.last_good);
  text.append_text("\t");
  append_time(text, record.page);
  text.append("\t%u\t", record.failures_in_page);
  append_time(text, record.failing_since);
  text.append_text("\t");
  append_time(text, record.told);
  text.append_text("\n");
}

}  // namespace skypost
