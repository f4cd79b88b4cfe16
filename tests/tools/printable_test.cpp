#include "common/printable.h"

#include <gtest/gtest.h>

namespace skypost::testing {
namespace {

TEST(Printable, LeavesNothingThatATerminalObeysOrABrowserGuesses) {
  using namespace std::string_literals;
  const std::pair<std::string, std::string> CASES[] = {
      {"plain <text>\\x", "plain <text>\\x"},
      {"\x1b[2J\r\n\t\x7f"s + '\0', "\\x1b[2J\\x0d\\x0a\\x09\\x7f\\x00"},
      {"\xc3\xbc \xe2\x82\xac \xf0\x9f\x8c\xa7", "\xc3\xbc \xe2\x82\xac \xf0\x9f\x8c\xa7"},
      {"\xb0\xb0", "\\xb0\\xb0"},                             // ISO 8859-1
      {"\xc2\x9b", "\\xc2\\x9b"},                             // a control character
      {"\xc0\xaf\xe0\x80\xaf", "\\xc0\\xaf\\xe0\\x80\\xaf"},  // overlong
      {"\xed\xa0\x80", "\\xed\\xa0\\x80"},                    // half of a surrogate pair
      {"\xf4\x90\x80\x80", "\\xf4\\x90\\x80\\x80"},           // beyond the last code point
      {"\xe2\x82", "\\xe2\\x82"},                             // truncated
      {"\xe2\x80\xae", "\\xe2\\x80\\xae"},                    // a right-to-left override
      {"\xd8\x9c\xe2\x80\x8e\xe2\x80\x8f", "\\xd8\\x9c\\xe2\\x80\\x8e\\xe2\\x80\\x8f"},  // marks
      {"\xe2\x81\xa6", "\\xe2\\x81\\xa6"},  // a directional isolate
  };
  for (const auto& [text, expected] : CASES) EXPECT_EQ(printable(text), expected);
  EXPECT_EQ(printable_lines("d\r"), std::vector<std::string>{"d\\x0d"});
}

}  // namespace
}  // namespace skypost::testing
