#include "compose/units.h"

#include <gtest/gtest.h>

#include <utility>

namespace skypost::testing {
namespace {

struct conversion_row {
  const char* name;
  double (*convert)(std::int32_t value);
  std::int32_t stored;
  double sent;
};

// No weather has such values, and a text rounds them to one digit or two: these show each digit of a constant.
constexpr conversion_row CONVERSIONS[] = {
    // clang-format off
    {"to_itself",             to_itself,             2'000'000'000, 2'000'000'000},
    {"from_tenths",           from_tenths,           2'000'000'000,   200'000'000},
    {"from_tenths",           from_tenths,                     -19,            -1.9},
    {"from_tenths_truncated", from_tenths_truncated,            19,             1},
    {"from_tenths_truncated", from_tenths_truncated,           -19,            -1},
    {"to_fahrenheit",         to_fahrenheit,         2'000'000'000,   360'000'032},
    {"to_fahrenheit",         to_fahrenheit,                  -400,           -40},
    {"to_kmh",                to_kmh,                1'000'000'000,   360'000'000},
    {"to_mph",                to_mph,                1'000'000'000,   223'700'000},
    {"to_knots",              to_knots,              1'000'000'000,   194'400'000},
    {"to_inches",             to_inches,             1'270'000'000,     5'000'000},
    {"to_hundredths_inch",    to_hundredths_inch,    1'270'000'000,   500'000'000},
    {"hour_to_five_minutes",  hour_to_five_minutes,  1'200'000'000,    10'000'000},
    {"to_inhg",               to_inhg,               1'692'500'000,     5'000'000},
    {"to_exact_inhg",         to_exact_inhg,         1'693'195'000,     5'000'000},
    // clang-format on
};

TEST(Units, AreConvertedWithEachDigitOfTheirConstants) {
  for (const conversion_row& row : CONVERSIONS)
    EXPECT_DOUBLE_EQ(row.convert(row.stored), row.sent) << row.name << " of " << row.stored;
}

TEST(Units, AreRoundedToTheNearestWholeNumber) {
  constexpr std::pair<double, long long> CASES[] = {{0.49, 0},  {0.5, 1},   {1.49, 1},   {2.5, 3},
                                                    {-0.49, 0}, {-0.5, -1}, {-1.49, -1}, {-2.5, -3}};
  for (const auto& [value, whole] : CASES) EXPECT_EQ(to_nearest(value), whole) << value;
}

}  // namespace
}  // namespace skypost::testing
