// Texts of fixed capacity: nothing is written past the end, nothing is lost without being said.

#include "base/text.h"

#include <gtest/gtest.h>

#include <string>

namespace skypost::testing {
namespace {

// Fills a text of 8 characters that stands between two guards.
template <class change>
void expect_text(const char* name, change&& make, std::string_view expected, bool cut) {
  SCOPED_TRACE(name);
  struct {
    char before[4] = {'#', '#', '#', '#'};
    char bytes[9] = {};
    char after[4] = {'#', '#', '#', '#'};
  } room;
  text_buffer text(room.bytes);
  make(text);
  EXPECT_EQ(text.view(), expected);
  EXPECT_EQ(text.c_str()[text.length()], '\0');
  EXPECT_EQ(text.was_cut(), cut);
  EXPECT_EQ(std::string_view(room.before, 4), "####");
  EXPECT_EQ(std::string_view(room.after, 4), "####");
}

TEST(Text, AppendsUpToItsCapacity) {
  using text = text_buffer;
  using std::string_view_literals::operator""sv;
  expect_text(
      "empty", [](text&) {}, "", false);
  expect_text(
      "exact", [](text& t) { t.append("%d-%s", 1234, "abc"); }, "1234-abc", false);
  expect_text(
      "one too many", [](text& t) { t.append("%d-%s", 1234, "abcd"); }, "1234-abc", true);
  expect_text(
      "cut in a number", [](text& t) { t.append("%09d", 7); }, "00000000", true);
  expect_text(
      "full already", [](text& t) { t.append_text("12345678"), t.append("%s", "x"); }, "12345678", true);
  expect_text(
      "nothing behind full", [](text& t) { t.append_text("12345678"), t.append("%s", ""); }, "12345678",
      false);
  expect_text(
      "text", [](text& t) { t.append_text("123456789"); }, "12345678", true);
  expect_text(
      "no format", [](text& t) { t.append_text("%s%d%n"); }, "%s%d%n", false);
  expect_text(
      "inner NUL", [](text& t) { t.append_text("a\0b"sv), t.append("%c", 'c'); }, "a\0bc"sv, false);
  expect_text(
      "character", [](text& t) { t.append_text("1234567"), t.append_character('8'); }, "12345678", false);
  expect_text(
      "cut stays", [](text& t) { t.append_text("123456789"), t.set_length(2), t.append_text("x"); }, "12x",
      true);
  expect_text(
      "clear", [](text& t) { t.append_text("123456789"), t.clear(), t.append_text("x"); }, "x", false);
}

TEST(Text, PutsAValueIntoAPattern) {
  using text = text_buffer;
  expect_text(
      "between", [](text& t) { t.append_pattern("<%s>", "abc"); }, "<abc>", false);
  expect_text(
      "first place only", [](text& t) { t.append_pattern("%s%s", "ab"); }, "ab%s", false);
  expect_text(
      "value is no pattern", [](text& t) { t.append_pattern("%s!", "%s%n"); }, "%s%n!", false);
  expect_text(
      "no place", [](text& t) { t.append_pattern("100 %", "abc"); }, "100 %", false);
  expect_text(
      "cut value", [](text& t) { t.append_pattern("<%s>", "12345678"); }, "<1234567", true);
}

TEST(Text, ReplacesAndRemovesCharacters) {
  using text = text_buffer;
  expect_text(
      "replace", [](text& t) { t.append_text("\na\n\nb\n"), t.replace_all('\n', ' '); }, " a  b ", false);
  expect_text(
      "end there", [](text& t) { t.append_text("ab\ncd\n"), t.replace_all('\n', '\0'); }, "ab", false);
  expect_text(
      "remove", [](text& t) { t.append_text("\ra\r\rb\r"), t.remove_all('\r'); }, "ab", false);
  expect_text(
      "remove all", [](text& t) { t.append_text("\r\r"), t.remove_all('\r'); }, "", false);
}

TEST(Text, TakesALengthNoLongerThanItsRoom) {
  using text = text_buffer;
  expect_text(
      "shorter", [](text& t) { t.append_text("abcdef"), t.set_length(3); }, "abc", false);
  expect_text(
      "too long", [](text& t) { t.append_text("12345678"), t.set_length(100); }, "12345678", false);
}

TEST(Text, SplitsWhereThereIsSomething) {
  EXPECT_EQ(head_of("abc", 2), "ab");
  EXPECT_EQ(head_of("abc", std::string_view::npos), "abc");
  EXPECT_EQ(tail_of("abc", 2), "c");
  EXPECT_EQ(tail_of("abc", 9), "");
}

}  // namespace
}  // namespace skypost::testing
