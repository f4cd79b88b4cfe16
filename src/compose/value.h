#pragma once

#include <cstdint>

#include "base/text.h"
#include "compose/units.h"
#include "live/live_record.h"

namespace skypost {

// How a network takes a number: converted to its unit, with a fixed number of decimals. Without decimals, it is rounded to
// the nearest whole number, halves away from zero.
struct value_format {
  double (*convert)(std::int32_t value);
  int decimals;
};

inline constexpr value_format WHOLE{to_itself, 0};          // the stored number
inline constexpr value_format TENTHS{from_tenths, 1};       // °C, hPa, mm, m/s, W/m², UV index
inline constexpr value_format WHOLE_UNITS{from_tenths, 0};  // the same, rounded
inline constexpr value_format KMH{to_kmh, 1};
inline constexpr value_format KNOTS{to_knots, 1};
inline constexpr value_format MPH{to_mph, 1};
inline constexpr value_format WHOLE_MPH{to_mph, 0};
inline constexpr value_format FAHRENHEIT{to_fahrenheit, 1};
inline constexpr value_format INCHES{to_inches, 2};
inline constexpr value_format INHG{to_inhg, 2};

// Appends a value that is not missing.
void append_value(text_buffer& text, std::int32_t value, const value_format& format);

// Appends the value, or `filler` if it is missing.
void append_or(text_buffer& text, const char* filler, std::int32_t value, const value_format& format);

}  // namespace skypost
