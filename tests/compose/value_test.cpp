// Numbers as the networks read them: signs and halves are where such programs went wrong.

#include "compose/value.h"

#include <gtest/gtest.h>

#include "compose/parameters.h"
#include "support/station.h"

namespace skypost::testing {
namespace {

struct value_case {
  std::int32_t value;
  const value_form* form;
  const char* text;
};

TEST(Value, IsWrittenRoundedAndWithItsSign) {
  constexpr value_case CASES[] = {
      {-208, &FAHRENHEIT, "-5.4"},  // -20.8 °C
      {-178, &TENTHS, "-17.8"},
      {-5, &TENTHS, "-0.5"},
      {0, &TENTHS, "0.0"},
      {-57, &WHOLE_UNITS, "-6"},
      {25, &WHOLE_UNITS, "3"},  // halves go away from zero, not to the even number
      {-25, &WHOLE_UNITS, "-3"},
      {-4, &WHOLE_UNITS, "0"},  // and no "-0"
      {-5, &WHOLE_UNITS, "-1"},
      {-9998, &WHOLE, "-9998"},
      {2'147'483'647, &WHOLE, "2147483647"},
      {2'147'483'647, &FAHRENHEIT, "386547088.5"},  // no overflow on the way
  };
  for (const value_case& row : CASES) {
    fixed_text<40> text;
    append_value(text, row.value, *row.form);
    EXPECT_EQ(text.view(), row.text);
  }
}

TEST(Value, ThatIsMissingIsReplacedOrLeftOut) {
  constexpr parameter ROWS[] = {
      {"&a=", &LiveRecord::temp10, TENTHS, ";"},
      {"&b=", &LiveRecord::dew10, TENTHS, ";"},
      {"&c=", live_number::extra_temperature(5), TENTHS},
      {"&d=", live_number::extra_temperature(4), TENTHS},
      {"&e=", &LiveRecord::todaymaxtemptime, WHOLE, "", &LiveRecord::dew10},
      {"&f=", &LiveRecord::todaymaxtemptime, WHOLE, "", &LiveRecord::temp10},
  };
  LiveRecord live = sparse_station();
  live.temp10 = MISSING_VALUE;
  live.dew10 = -9998;
  live.extratemp10[5] = 7;
  fixed_text<80> text;
  append_known(text, live, ROWS);
  append_or(text, "--", MISSING_VALUE, TENTHS);
  EXPECT_EQ(text.view(), "&b=-999.8;&c=0.7&e=0--");
}

}  // namespace
}  // namespace skypost::testing
