// The files that AWEKAS, Wedaal and Wetterpage24 fetch: one value per line, in °C, km/h, hPa and mm, local
// time. Missing values are empty lines. All three start alike; Wedaal adds the extremes.

#include <cstdint>

#include "compose/dates.h"
#include "compose/numbered_record.h"
#include "pullfiles/pullfiles.h"

namespace skypost {
namespace {

enum file_set : std::uint8_t { AWEKAS = 1, WEDAAL = 2, PAGE24 = 4, ALL = AWEKAS | WEDAAL | PAGE24 };

// The year has two digits, from 2100 three.
void append_short_date(text_buffer& text, const station& source) {
  const std::tm& local = source.now.local;
  text.append("%02d.%02d.%02d", local.tm_mday, local.tm_mon + 1, local.tm_year - 100);
}

struct file_line {
  int number;
  int files;
  field_content content;
};

constexpr file_line LINES[] = {
    // clang-format off
    { 1, ALL,             always("")},
    { 2, ALL,             number_or("", &LiveRecord::temp10,           TENTHS)},
    { 3, ALL,             number_or("", &LiveRecord::hum,              WHOLE)},
    { 4, ALL,             number_or("", &LiveRecord::sealevel10,       TENTHS)},
    { 5, AWEKAS | PAGE24, number_or("", &LiveRecord::todayraintotal10, TENTHS)},
    { 5, WEDAAL,          always("")},
    { 6, ALL,             number_or("", &LiveRecord::wind10,           KMH)},
    { 7, AWEKAS,          number_or("", &LiveRecord::winddir,          WHOLE)},
    { 7, WEDAAL | PAGE24, word_or  ("", &LiveRecord::winddirstr)},
    { 8, ALL,             made_by(append_local_clock)},
    { 9, AWEKAS,          made_by(append_local_date)},
    { 9, WEDAAL | PAGE24, made_by(append_short_date)},
    {10, ALL,             always("")},
    {11, WEDAAL,          number_or("", &LiveRecord::todaymaxgust10,   KMH)},
    {12, WEDAAL,          time_or  ("", &LiveRecord::todaymaxgusttimestr, &LiveRecord::todaymaxgust10)},
    {13, WEDAAL,          number_or("", &LiveRecord::todaymintemp10,   TENTHS)},
    {14, WEDAAL,          number_or("", &LiveRecord::todaymaxtemp10,   TENTHS)},
    {15, WEDAAL,          always("")},
    {16, WEDAAL,          number_or("", &LiveRecord::monthmintemp10,   TENTHS)},
    {17, WEDAAL,          number_or("", &LiveRecord::monthmaxtemp10,   TENTHS)},
    {18, WEDAAL,          number_or("", &LiveRecord::monthmaxgust10,   KMH)},
    {19, WEDAAL,          number_or("", &LiveRecord::monthraintotal10, TENTHS)},
    {20, WEDAAL,          number_or("", &LiveRecord::yearmintemp10,    TENTHS)},
    {21, WEDAAL,          number_or("", &LiveRecord::yearmaxtemp10,    TENTHS)},
    {22, WEDAAL,          number_or("", &LiveRecord::yearmaxgust10,    KMH)},
    {23, WEDAAL,          number_or("", &LiveRecord::yearraintotal10,  TENTHS)},
    {24, WEDAAL,          always("")},
    // clang-format on
};

template <file_set file>
constexpr bool is_in(const file_line& line) {
  return (line.files & file) != 0;
}
static_assert(numbers_each_once(LINES, 10, is_in<AWEKAS>));
static_assert(numbers_each_once(LINES, 24, is_in<WEDAAL>));
static_assert(numbers_each_once(LINES, 10, is_in<PAGE24>));

template <file_set file>
void compose_lines(text_buffer& text, const station& source) {
  for (const file_line& line : LINES) {
    if (!is_in<file>(line)) continue;
    append_content(text, line.content, source, append_unchanged);
    text.append_character('\n');
  }
}

}  // namespace

constinit const pull_file AWEKAS_PULL = {written_as_file<AWEKAS_PULL>("awekas_pull", compose_lines<AWEKAS>),
                                         "awekas.txt"};
constinit const pull_file WEDAAL_PULL = {written_as_file<WEDAAL_PULL>("wedaal_pull", compose_lines<WEDAAL>),
                                         "wedaal.txt"};
constinit const pull_file WETTERPAGE24 = {
    written_as_file<WETTERPAGE24>("wetterpage24", compose_lines<PAGE24>), "wetterpage24.txt"};

}  // namespace skypost
