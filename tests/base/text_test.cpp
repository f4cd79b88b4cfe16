// A fixed-capacity text must not write past its end, and must not lose characters silently.

#include "base/text.h"

#include <gtest/gtest.h>

#include <string>

namespace skypost::testing {
namespace {

using std::string_view_literals::operator""sv;

struct text_case {
  const char* name;
  void (*change)(text_buffer& t);  // `t` is empty and has room for 8 characters
  std::string_view expected;
  bool was_cut;
};

// In a new text only the first byte is set; the compiler would reject a read of any other.
static_assert(*fixed_text<8>().c_str() == '\0');

TEST(Text, StaysInItsRoom) {
  const text_case cases[] = {
      // clang-format off
      {"empty", [](auto&) {}, "", false},
      {"exact", [](auto& t) { t.append("%d-%s", 1234, "abc"); }, "1234-abc", false},
      {"one too many", [](auto& t) { t.append("%d-%s", 1234, "abcd"); }, "1234-abc", true},
      {"truncated in a number", [](auto& t) { t.append("%09d", 7); }, "00000000", true},
      {"full already", [](auto& t) { t.append_text("12345678"), t.append("%s", "x"); }, "12345678", true},
      {"nothing after full", [](auto& t) { t.append_text("12345678"), t.append("%s", ""); }, "12345678", false},
      {"text", [](auto& t) { t.append_text("123456789"); }, "12345678", true},
      {"no format", [](auto& t) { t.append_text("%s%d%n"); }, "%s%d%n", false},
      {"inner NUL", [](auto& t) { t.append_text("a\0b"sv), t.append("%c", 'c'); }, "a\0bc"sv, false},
      {"character", [](auto& t) { t.append_text("1234567"), t.append_character('8'); }, "12345678", false},
      {"stays truncated", [](auto& t) { t.append_text("123456789"), t.set_length(2), t.append_text("x"); }, "12x", true},
      {"clear", [](auto& t) { t.append_text("123456789"), t.clear(), t.append_text("x"); }, "x", false},
      {"between", [](auto& t) { t.append_pattern("<%s>", "abc"); }, "<abc>", false},
      {"first place only", [](auto& t) { t.append_pattern("%s%s", "ab"); }, "ab%s", false},
      {"value is no pattern", [](auto& t) { t.append_pattern("%s!", "%s%n"); }, "%s%n!", false},
      {"no place", [](auto& t) { t.append_pattern("100 %", "abc"); }, "100 %", false},
      {"truncated value", [](auto& t) { t.append_pattern("<%s>", "12345678"); }, "<1234567", true},
      {"replace", [](auto& t) { t.append_text("\na\n\nb\n"), t.replace_all('\n', ' '); }, " a  b ", false},
      {"end there", [](auto& t) { t.append_text("ab\ncd\n"), t.cut_at('\n'); }, "ab", false},
      {"remove", [](auto& t) { t.append_text("\ra\r\rb\r"), t.remove_all('\r'); }, "ab", false},
      {"remove all", [](auto& t) { t.append_text("\r\r"), t.remove_all('\r'); }, "", false},
      {"shorter", [](auto& t) { t.append_text("abcdef"), t.set_length(3); }, "abc", false},
      {"too long", [](auto& t) { t.append_text("12345678"), t.set_length(100); }, "12345678", false},
      // clang-format on
  };
  for (const text_case& row : cases) {
    SCOPED_TRACE(row.name);
    struct {
      char before[4] = {'#', '#', '#', '#'};
      char bytes[9] = {};
      char after[4] = {'#', '#', '#', '#'};
    } room;
    text_buffer text(room.bytes);
    row.change(text);
    EXPECT_EQ(text.view(), row.expected);
    EXPECT_EQ(text.c_str()[text.length()], '\0');
    EXPECT_EQ(text.was_cut(), row.was_cut);
    EXPECT_EQ(std::string_view(room.before, 4), "####");
    EXPECT_EQ(std::string_view(room.after, 4), "####");
  }
}

}  // namespace
}  // namespace skypost::testing
