#pragma once

#include <cstdint>

namespace skypost {

constexpr bool is_digit(char character) { return character >= '0' && character <= '9'; }

// How a number of the report is scanned and stored.
enum class number_scan : std::uint8_t {
  tenths,          // stored in tenths, rounded
  rounded,         // stored whole, rounded
  integer,         // stored whole; ends at the first non-digit
  integer_tenths,  // like integer, but stored in tenths
};

// Stores the number at the start of `text` in `value`, with halves rounded away from zero. Leaves `value` alone if
// there is no number or it does not fit. strtod would accept "nan", "inf" and hexadecimal numbers, and depends on the
// locale.
void read_number(number_scan scan, const char* text, std::int32_t& value);

}  // namespace skypost
