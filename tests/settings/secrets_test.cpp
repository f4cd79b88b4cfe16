// A server may repeat what it was sent, and the owner may publish what the tools show.

#include "settings/secrets.h"

#include <gtest/gtest.h>

#include <string>

#include "compose/md5.h"
#include "settings/field_descriptions.h"

namespace skypost::testing {
namespace {

std::string hidden_in(const std::string& text, const settings_record& settings) {
  fixed_text<10'000> shown;
  shown.append_text(text);
  hide_secrets(shown, settings);
  return shown.c_str();
}

// The same where the text is cut after `capacity` characters.
template <std::size_t capacity>
std::string hidden_in_cut(const std::string& text, const settings_record& settings) {
  fixed_text<capacity> shown;
  shown.append_text(text);
  hide_secrets(shown, settings);
  return shown.c_str();
}

settings_record with_password(const std::string& password) {
  settings_record settings{};
  settings.set_text(windfinder_password, password);
  return settings;
}

TEST(HideSecrets, HidesEachSecretOfTheSettings) {
  for (const field_description& row : FIELD_DESCRIPTIONS) {
    if (!row.field.is_secret()) continue;
    settings_record settings{};
    if (row.field.is_text())
      settings.set_text(row.as_text(), "s3cret");
    else
      settings.set_integer(row.as_integer(), 12345);
    EXPECT_EQ(hidden_in("wrong: s3cret, 12345.", settings),
              row.field.is_text() ? "wrong: ***, 12345." : "wrong: s3cret, ***.")
        << row.name;
  }
}

TEST(HideSecrets, KnowsASecretHoweverItIsWritten) {
  const struct {
    const char* secret;
    const char* text;
    const char* shown;
  } cases[] = {
      // clang-format off
      {"a&b c",    "PASSWORD=a&b c&x",         "PASSWORD=***&x"},
      {"a&b c",    "PASSWORD=a%26b+c&x",       "PASSWORD=***&x"},
      {"a&b c",    "PASSWORD=%61%26%62%20c&x", "PASSWORD=***&x"},
      {"a+b",      "a%2bb a%2Bb a+b a b",      "*** *** *** ***"},
      {"50%ab",    "50%ab 50%25ab 50\xAB",     "*** *** ***"},  // a network reads %ab as one byte
      {"100%",     "100% 100%25",              "*** ***"},
      {"100%",     "100%20 x",                 "***20 x"},
      {"\"k\xE9y", "\"k%E9y %22k\xE9y",        "*** ***"},
      {"abcabd",   "abcabcabd",                "abc***"},
      {"a&b<\"'",  "a&amp;b&lt;&quot;&#039;", "***"},        // in a page
      {"a&amp;b",  "a&amp;b a&amp;amp;b a%26amp;b", "*** *** ***"},
      {"word",     "wor, Word, swords",        "wor, Word, s***s"},
      // clang-format on
  };
  for (const auto& row : cases) EXPECT_EQ(hidden_in(row.text, with_password(row.secret)), row.shown);
}

// The longer one; the shorter alone would leave its rest.
TEST(HideSecrets, HidesTheLongestOfThoseThatFit) {
  settings_record settings = with_password("pass");
  settings.set_text(wunderground_password, "password");
  EXPECT_EQ(hidden_in("password", settings), "***");
}

TEST(HideSecrets, LeavesTextsWithoutASecretAlone) {
  const std::string reply = "upload to awekas: 50% of a%zz, 2026-11-25 01:23:45, deadbeef 100%";
  EXPECT_EQ(hidden_in(reply, settings_record{}), reply);
  EXPECT_EQ(hidden_in(reply, with_password("of")), reply);  // too short
  EXPECT_EQ(hidden_in("", with_password("secret")), "");
}

TEST(HideSecrets, HidesDigests) {
  md5_text digest;
  md5_hex("secret", digest);
  const std::string text = digest.c_str();
  EXPECT_EQ(hidden_in("val=" + text + ";x", settings_record{}), "val=***;x");
  EXPECT_EQ(hidden_in(text.substr(1), settings_record{}), text.substr(1));
  EXPECT_EQ(hidden_in_cut<20>("id=" + text, settings_record{}), "id=***");
}

TEST(HideSecrets, HidesTheBeginningOfASecretWhereTheTextWasCut) {
  const settings_record settings = with_password("s&cret");
  EXPECT_EQ(hidden_in_cut<8>("pass=s&cret", settings), "pass=***");
  EXPECT_EQ(hidden_in_cut<8>("pass=s%26cret", settings), "pass=***");
  EXPECT_EQ(hidden_in_cut<7>("pass=s%26cret", settings), "pass=**");
  EXPECT_EQ(hidden_in_cut<6>("pass=s%26cret", settings), "pass=*");
  EXPECT_EQ(hidden_in_cut<11>("pass=s&amp;cret", settings), "pass=***");
  EXPECT_EQ(hidden_in_cut<8>("pass=s&amp;cret", settings), "pass=***");
  EXPECT_EQ(hidden_in("pass=s&c", settings), "pass=s&c");  // that is all there was
}

}  // namespace
}  // namespace skypost::testing
