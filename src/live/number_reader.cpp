#include "live/number_reader.h"

#include <limits>

namespace skypost {
namespace {

// Returns the exponent at the start of `text`, or 0.
std::int32_t read_exponent(const char* text) {
  constexpr std::int32_t LIMIT = 10'000'000;  // a report has too few digits to offset a larger one
  if (*text != 'e' && *text != 'E') return 0;
  ++text;
  const bool is_negative = *text == '-';
  if (*text == '+' || *text == '-') ++text;
  std::int32_t exponent = 0;
  for (; is_digit(*text); ++text)
    if (exponent < LIMIT) exponent = exponent * 10 + (*text - '0');
  return is_negative ? -exponent : exponent;
}

// Stores digits * 10^power, rounded, if the result fits.
void store_number(std::int64_t digits, std::int32_t power, bool is_negative, std::int32_t& value) {
  constexpr std::int64_t HIGHEST = std::numeric_limits<std::int32_t>::max();
  for (; power > 0 && digits != 0; --power) {
    if (digits > HIGHEST) return;
    digits *= 10;
  }
  for (; power < -1 && digits != 0; ++power) digits /= 10;
  if (power < 0) digits = (digits + 5) / 10;
  if (digits > HIGHEST + (is_negative ? 1 : 0)) return;
  value = static_cast<std::int32_t>(is_negative ? -digits : digits);
}

}  // namespace

void read_number(number_scan scan, const char* text, std::int32_t& value) {
  constexpr std::int64_t DIGITS_LIMIT = 100'000'000'000'000'000;  // leaves room for one more digit
  const bool is_whole = scan == number_scan::integer || scan == number_scan::integer_tenths;
  std::int32_t power = scan == number_scan::tenths || scan == number_scan::integer_tenths ? 1 : 0;
  const bool is_negative = *text == '-';
  if (*text == '+' || *text == '-') ++text;

  std::int64_t digits = 0;
  bool has_digit = false;
  bool is_after_point = false;
  for (; is_digit(*text) || (*text == '.' && !is_whole && !is_after_point); ++text) {
    if (*text == '.') {
      is_after_point = true;
      continue;
    }
    has_digit = true;
    if (digits < DIGITS_LIMIT) {
      digits = digits * 10 + (*text - '0');
      if (is_after_point) --power;
    } else if (!is_after_point) {
      ++power;
    }
  }
  if (!has_digit) return;
  if (!is_whole) power += read_exponent(text);
  store_number(digits, power, is_negative, value);
}

}  // namespace skypost
