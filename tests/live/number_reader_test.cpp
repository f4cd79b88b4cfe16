// Numbers as a sensor may send them, and everything that only looks like one.

#include "live/number_reader.h"

#include <gtest/gtest.h>

#include <climits>
#include <initializer_list>

namespace skypost::testing {
namespace {

constexpr std::int32_t UNTOUCHED = -77;

struct number_case {
  const char* text;
  std::int32_t expected;
};

void expect_numbers(number_scan form, std::initializer_list<number_case> cases) {
  for (const number_case& row : cases) {
    std::int32_t value = UNTOUCHED;
    read_number(form, row.text, value);
    EXPECT_EQ(value, row.expected) << row.text;
  }
}

TEST(NumberReader, ReadsTenths) {
  // clang-format off
  expect_numbers(number_scan::tenths,
                 {{"21.25", 213}, {"-3.25", -33}, {"21.24", 212},
                  {"21.249999999999999999999999999999", 212}, {"-0.04", 0}, {"-0.05", -1}, {"0.15", 2},
                  {"+5", 50}, {"-.5", -5}, {"5.", 50}, {"00012.5", 125}, {"1e2", 1000},
                  {"1.5E+1", 150}, {"15e-1", 15}, {"1.96e-1", 2}, {"2e", 20}, {"2e-x", 20},
                  {"12abc", 120}, {"1.2.3", 12}, {"1,5", 10}, {"0x1p5", 0}, {"-0X1F", 0},
                  {"0e99999999999", 0}, {"1e-99999999999", 0}, {"1234567890123456789012345e-23", 123},
                  {"0.00000000000000000000000012345e26", 123}, {"214748364.7", INT_MAX},
                  {"-214748364.8", INT_MIN},
                  {"214748364.75", UNTOUCHED}, {"-214748364.85", UNTOUCHED},
                  {"99999999999", UNTOUCHED}, {"1e308", UNTOUCHED},
                  {"-1e99999999999", UNTOUCHED}, {"nan", UNTOUCHED}, {"-inf", UNTOUCHED},
                  {"infinity", UNTOUCHED}, {"---", UNTOUCHED}, {"abc", UNTOUCHED},
                  {"-", UNTOUCHED}, {"+.", UNTOUCHED}, {"+-5", UNTOUCHED},
                  {"- 5", UNTOUCHED}, {"e5", UNTOUCHED}, {"", UNTOUCHED}});
  // clang-format on
}

TEST(NumberReader, ReadsWholeNumbers) {
  // clang-format off
  expect_numbers(number_scan::integer,
                 {{"55", 55}, {"55.7", 55}, {"-7.9", -7}, {"+7", 7}, {"007", 7}, {"12e3", 12},
                  {"0x10", 0}, {"2147483647", INT_MAX}, {"-2147483648", INT_MIN},
                  {"2147483648", UNTOUCHED}, {"-2147483649", UNTOUCHED},
                  {"99999999999", UNTOUCHED}, {"18446744073709551671", UNTOUCHED},
                  {".5", UNTOUCHED}, {"nan", UNTOUCHED}, {"", UNTOUCHED}});
  expect_numbers(number_scan::integer_tenths,
                 {{"523.4", 5230}, {"-3.9", -30}, {"5e1", 50}, {"214748364", 2'147'483'640},
                  {"214748365", UNTOUCHED}, {"---", UNTOUCHED}});
  expect_numbers(number_scan::rounded,
                 {{"512.6", 513}, {"512,6", 512}, {"512.4", 512}, {"-0.5", -1}, {"1e3", 1000},
                  {"abc", UNTOUCHED}, {"99999999999", UNTOUCHED}});
  // clang-format on
}

}  // namespace
}  // namespace skypost::testing
