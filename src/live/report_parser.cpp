#include "live/report_parser.h"

#include <cstring>
#include <ctime>
#include <limits>
#include <string_view>

#include "base/debug.h"
#include "base/text.h"
#include "live/live_record.h"
#include "live/live_table.h"
#include "settings/record.h"

namespace skypost {

namespace {

constexpr int TIME_DIGITS = 14;

constexpr bool is_blank(char character) {
  return character == ' ' || (character >= '\t' && character <= '\r');
}

const char* skip_blanks(const char* text) {
  while (is_blank(*text)) ++text;
  return text;
}

const char* skip_word(const char* text) {
  while (*text != '\0' && !is_blank(*text)) ++text;
  return text;
}

void copy_text(live_text& destination, std::string_view text) {
  const std::size_t length = text.size() < sizeof destination ? text.size() : sizeof destination - 1;
  std::memcpy(destination, text.data(), length);
  destination[length] = '\0';
}

void read_word(const char* text, live_text& destination) {
  const std::size_t length = static_cast<std::size_t>(skip_word(text) - text);
  if (length != 0) copy_text(destination, {text, length});
}

void read_time(const live_row& row, const char* text, LiveRecord& live) {
  for (int i = 0; i < TIME_DIGITS; ++i)
    if (!is_digit(text[i])) return;
  format_hhmm(live.*row.text, text);
  if (row.number.is_none()) return;
  const std::int64_t seconds = parse_server_time(text);
  if (seconds >= std::numeric_limits<std::int32_t>::min() &&
      seconds <= std::numeric_limits<std::int32_t>::max())
    row.number.set(live, static_cast<std::int32_t>(seconds));
}

void parse_row(const live_row& row, std::string_view report, const settings_record& settings,
               LiveRecord& live) {
  const char* const value = find_value(report, row, settings);
  if (value == nullptr) return;
  switch (row.kind) {
    case value_kind::number: {
      std::int32_t number = row.missing_number;
      read_number(row.scan, value, number);
      row.number.set(live, number);
      break;
    }
    case value_kind::word:
      read_word(value, live.*row.text);
      break;
    case value_kind::time:
      read_time(row, value, live);
      break;
  }
}

// A current value, and the extremes that it may have passed since the server computed them. nullptr: no such
// extreme. If there are two, neither is widened unless both are known.
struct widening {
  std::int32_t LiveRecord::*current;
  std::int32_t LiveRecord::*highest;
  std::int32_t LiveRecord::*lowest;
};

constexpr widening WIDENINGS[] = {
    // clang-format off
    {&LiveRecord::temp10,     &LiveRecord::todaymaxtemp10,     &LiveRecord::todaymintemp10},
    {&LiveRecord::temp10,     &LiveRecord::monthmaxtemp10,     &LiveRecord::monthmintemp10},
    {&LiveRecord::temp10,     &LiveRecord::yearmaxtemp10,      &LiveRecord::yearmintemp10},
    {&LiveRecord::dew10,      &LiveRecord::todaymaxdew10,      &LiveRecord::todaymindew10},
    {&LiveRecord::dew10,      &LiveRecord::monthmaxdew10,      &LiveRecord::monthmindew10},
    {&LiveRecord::dew10,      &LiveRecord::yearmaxdew10,       &LiveRecord::yearmindew10},
    {&LiveRecord::hum,        &LiveRecord::todaymaxhum,        &LiveRecord::todayminhum},
    {&LiveRecord::hum,        &LiveRecord::monthmaxhum,        &LiveRecord::monthminhum},
    {&LiveRecord::hum,        &LiveRecord::yearmaxhum,         &LiveRecord::yearminhum},
    {&LiveRecord::sealevel10, &LiveRecord::todaymaxsealevel10, &LiveRecord::todayminsealevel10},
    {&LiveRecord::sealevel10, &LiveRecord::monthmaxsealevel10, &LiveRecord::monthminsealevel10},
    {&LiveRecord::sealevel10, &LiveRecord::yearmaxsealevel10,  &LiveRecord::yearminsealevel10},
    {&LiveRecord::chill10,    nullptr,                         &LiveRecord::todayminchill10},
    {&LiveRecord::chill10,    nullptr,                         &LiveRecord::monthminchill10},
    {&LiveRecord::chill10,    nullptr,                         &LiveRecord::yearminchill10},
    {&LiveRecord::uv10,       &LiveRecord::todaymaxuv10,       nullptr},
    {&LiveRecord::uv10,       &LiveRecord::monthmaxuv10,       nullptr},
    {&LiveRecord::uv10,       &LiveRecord::yearmaxuv10,        nullptr},
    {&LiveRecord::solar10,    &LiveRecord::todaymaxsolar10,    nullptr},
    {&LiveRecord::solar10,    &LiveRecord::monthmaxsolar10,    nullptr},
    {&LiveRecord::solar10,    &LiveRecord::yearmaxsolar10,     nullptr},
    {&LiveRecord::gust10,     &LiveRecord::monthmaxgust10,     nullptr},
    {&LiveRecord::gust10,     &LiveRecord::yearmaxgust10,      nullptr},
    // clang-format on
};

bool is_usable(std::int32_t LiveRecord::*extreme, const LiveRecord& live) {
  return extreme == nullptr || known(live.*extreme);
}

void widen_extremes(LiveRecord& live) {
  for (const widening& row : WIDENINGS) {
    const std::int32_t current = live.*row.current;
    if (!known(current) || !is_usable(row.highest, live) || !is_usable(row.lowest, live)) continue;
    if (row.highest != nullptr && current > live.*row.highest) live.*row.highest = current;
    if (row.lowest != nullptr && current < live.*row.lowest) live.*row.lowest = current;
  }
  // Raise the day's highest gust even if the report has none.
  if (live.gust10 > live.todaymaxgust10) live.todaymaxgust10 = live.gust10;
}

void check_outdoor_values(LiveRecord& live) {
  if (known(live.temp10) && known(live.dew10) && known(live.hum)) return;
  live.temp10 = live.dew10 = live.hum = MISSING_VALUE;
  live_data_stale = 1;
}

void dump_live_record(const LiveRecord& live) {
  debug_print(
      "temp10: %d\nhum: %d\ndew10: %d\npress10: %d\nsealevel10: %d\naltimeter10: %d\nwind10: %d\n"
      "gust10: %d\nlast15mmaxgust10: %d\nwinddir: %d\nwinddirstr: %s\nrain: %d\ntodayraintotal10: %d\n",
      live.temp10, live.hum, live.dew10, live.press10, live.sealevel10, live.altimeter10, live.wind10,
      live.gust10, live.last15mmaxgust10, live.winddir, live.winddirstr, live.rain, live.todayraintotal10);
  debug_print(
      "todaymintemp10: %d\ntodaymaxtemp10: %d\ntodayminhum: %d\ntodaymaxhum: %d\n"
      "todayminsealevel10: %d\ntodaymaxsealevel10: %d\ntodaymaxgust10: %d\n",
      live.todaymintemp10, live.todaymaxtemp10, live.todayminhum, live.todaymaxhum, live.todayminsealevel10,
      live.todaymaxsealevel10, live.todaymaxgust10);
  debug_print(
      "monthmintemp10: %d\nmonthmaxtemp10: %d\nmonthminhum: %d\nmonthmaxhum: %d\n"
      "monthminsealevel10: %d\nmonthmaxsealevel10: %d\nmonthmaxgust10: %d\n",
      live.monthmintemp10, live.monthmaxtemp10, live.monthminhum, live.monthmaxhum, live.monthminsealevel10,
      live.monthmaxsealevel10, live.monthmaxgust10);
  debug_print(
      "yearmintemp10: %d\nyearmaxtemp10: %d\nyearminhum: %d\nyearmaxhum: %d\n"
      "yearminsealevel10: %d\nyearmaxsealevel10: %d\nyearmaxgust10: %d\n",
      live.yearmintemp10, live.yearmaxtemp10, live.yearminhum, live.yearmaxhum, live.yearminsealevel10,
      live.yearmaxsealevel10, live.yearmaxgust10);
}

std::int32_t read_digits(const char* digits, int first, int length) {
  std::int32_t value = 0;
  for (int i = first; i < first + length; ++i) value = value * 10 + (digits[i] - '0');
  return value;
}

}  // namespace

const char* find_value(std::string_view report, const live_row& row, const settings_record& settings) {
  fixed_text<63> key;
  key.append_pattern(row.key, settings.text(row.sensor));
  // strstr would take 2.6 to 6 times as long on ARM or with musl.
  const void* const place = memmem(report.data(), report.size(), key.c_str(), key.length());
  return place == nullptr ? nullptr : skip_blanks(skip_word(static_cast<const char*>(place)));
}

void reset_live_record(LiveRecord& live) {
  for (const live_row& row : LIVE_TABLE) {
    if (!row.number.is_none()) row.number.set(live, row.missing_number);
    if (row.text != nullptr) copy_text(live.*row.text, row.missing_text);
  }
}

void parse_live_reply(const char* report, const settings_record& settings, LiveRecord& live) {
  const std::string_view text = report;  // up to the first NUL
  for (const live_row& row : LIVE_TABLE) parse_row(row, text, settings, live);
  widen_extremes(live);
}

std::int64_t parse_server_time(const char* digits) {
  std::tm time{};
  time.tm_sec = read_digits(digits, 12, 2);
  time.tm_min = read_digits(digits, 10, 2);
  time.tm_hour = read_digits(digits, 8, 2);
  time.tm_mday = read_digits(digits, 6, 2);
  time.tm_mon = read_digits(digits, 4, 2) - 1;
  time.tm_year = read_digits(digits, 0, 4) - 1900;
  time.tm_isdst = -1;  // let mktime decide about daylight saving
  return std::mktime(&time);
}

void format_hhmm(live_text& destination, const char* digits) {
  const char text[] = {digits[8], digits[9], ':', digits[10], digits[11]};
  copy_text(destination, {text, sizeof text});
}

int load_live_record(const char* report) {
  reset_live_record(live_record);
  parse_live_reply(report, station_settings, live_record);
  check_outdoor_values(live_record);
  dump_live_record(live_record);
  return 0;
}

}  // namespace skypost
