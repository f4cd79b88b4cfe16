#pragma once

#include <cstdint>

namespace skypost {

constexpr bool is_digit(char character) { return character >= '0' && character <= '9'; }

// How a decimal number of the report is read and stored.
enum class number_scan : std::uint8_t {
  tenths,          // stored in tenths, rounded
  rounded,         // stored whole, rounded
  integer,         // stored whole; it ends at the first character that is no digit
  integer_tenths,  // the same, stored in tenths
};

// Stores the number that `text` begins with in `value`, halves rounded away from zero. Leaves `value` alone
// when there is no number or it does not fit. By hand, since the C library's readers also take "nan",
// "inf" and hexadecimal digits, which no sensor sends, and let the locale choose the decimal point.
void read_number(number_scan scan, const char* text, std::int32_t& value);

}  // namespace skypost
