#pragma once

#include <cstdint>

// Conversions from a stored whole number, usually tenths, to the unit that a network takes. The constants are the
// networks' own; where two networks use different ones for one unit, there are two functions.
namespace skypost {

// The nearest whole number, halves away from zero. Not llround(), because nothing else needs libm, which takes 300 KiB of
// memory.
constexpr long long to_nearest(double value) {
  const long long whole = static_cast<long long>(value);
  const double rest = value - static_cast<double>(whole);
  return whole + (rest >= 0.5 ? 1 : 0) - (rest <= -0.5 ? 1 : 0);
}

// A value stored as a whole number (percent, degrees of direction).
constexpr double to_itself(std::int32_t value) { return value; }

// tenths of any unit -> the unit
constexpr double from_tenths(std::int32_t tenths) { return tenths / 10.0; }

// tenths of any unit -> whole units, truncated
constexpr double from_tenths_truncated(std::int32_t tenths) {
  const std::int32_t whole = tenths / 10;
  return whole;
}

// tenths of °C -> °F
constexpr double to_fahrenheit(std::int32_t tenths) {
  return static_cast<double>(std::int64_t{tenths} * 9) / 50.0 + 32.0;
}

// tenths of m/s -> km/h, mph, knots
constexpr double to_kmh(std::int32_t tenths) { return tenths * 0.36; }
constexpr double to_mph(std::int32_t tenths) { return tenths * 0.2237; }
constexpr double to_knots(std::int32_t tenths) { return tenths / 10.0 * 1.944; }

// tenths of mm -> inches, hundredths of an inch
constexpr double to_inches(std::int32_t tenths) { return tenths / 254.0; }
constexpr double to_hundredths_inch(std::int32_t tenths) { return tenths / 2.54; }

// tenths of mm in an hour -> mm in five minutes, averaged over the hour
constexpr double hour_to_five_minutes(std::int32_t tenths) { return tenths / 120.0; }

// tenths of hPa -> inHg: the Weather Underground family's divisor, and the exact one
constexpr double to_inhg(std::int32_t tenths) { return tenths / 338.5; }
constexpr double to_exact_inhg(std::int32_t tenths) { return tenths / 338.639; }

}  // namespace skypost
