// A server may echo what it was sent, and the owner may publish what the tools print.

#include "common/secrets.h"

#include <gtest/gtest.h>

#include <string>

#include "common/field_descriptions.h"

namespace skypost::testing {
namespace {

// The text with its secrets hidden. With `was_cut`, it is the beginning of a truncated text.
std::string hidden_in(const std::string& text, const settings_record& settings, bool was_cut = false) {
  fixed_text<200> shown;
  shown.append_text(text + std::string(was_cut ? 200 : 0, 'x'));
  shown.set_length(text.size());
  hide_secrets(shown, settings);
  return shown.c_str();
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

TEST(HideSecrets, HidesASecretHoweverItIsWrittenAndNothingElse) {
  constexpr bool CUT = true;
  const struct {
    const char* secret;
    const char* text;
    const char* shown;
    bool was_cut = false;
  } ROWS[] = {
      // clang-format off
      {"a&b c",    "PASSWORD=a&b c&x",         "PASSWORD=***&x"},
      {"a&b c",    "PASSWORD=a%26b+c&x",       "PASSWORD=***&x"},
      {"a&b c",    "PASSWORD=%61%26%62%20c&x", "PASSWORD=***&x"},
      {"a+b",      "a%2bb a%2Bb a+b a b",      "*** *** *** ***"},
      {"50%ab",    "50%ab 50%25ab 50\xAB",     "*** *** ***"},  // a server decodes %ab
      {"100%",     "100% 100%25",              "*** ***"},
      {"100%",     "100%20 x",                 "***20 x"},
      {"\"k\xE9y", "\"k%E9y %22k\xE9y",        "*** ***"},
      {"abcabd",   "abcabcabd",                "abc***"},
      {"a&b<\"'",  "a&amp;b&lt;&quot;&#039;",  "***"},          // HTML entities
      {"a'b",      "a&#39;b a&#0039;b a&#x27;b a&#X27;b a&apos;b", "*** *** *** *** ***"},
      {"k\xE4y",   "k&auml;y k&#228;y k&#xe4;y k\\u00e4y k\\xE4y k\\344y", "*** *** *** *** *** ***"},
      {"k\xC3\xA4y", "k&auml;y k&Atilde;&curren;y k\\u00E4y k\\303\\244y", "*** *** *** ***"},
      {"\xC2\xA0\xC3\xBF\xE2\x82\xAC", "&nbsp;&yuml;&#8364; \\u00a0\\u00ff\\u20ac", "*** ***"},
      {"a\xF0\x9F\x8C\xA7", "a&#x1F327;",      "***"},
      {"a\"/\\b",  "a\\\"\\/\\\\b",          "***"},          // JSON
      {"a'b",      "a&#39b a&#;b a\\47b a\\u27b a&aposb", "a&#39b a&#;b a\\47b a\\u27b a&aposb"},
      {"x%2525",   "x%2525 x%25",              "*** ***"},  // the second was decoded once
      {"x%25y",    "x%2525y x%25y x%y",        "*** *** ***"},  // the first was encoded once more
      {"word",     "wor, Word, swords",        "wor, Word, s***s"},
      {"",         "50% of a%zz, 2026-11-25 01:23:45, deadbeef 100%", "50% of a%zz, 2026-11-25 01:23:45, deadbeef 100%"},
      {"of",       "one of them",              "one of them"},  // too short to be hidden
      {"secret",   "",                         ""},
      // Digests.
      {"",         "val=5ebe2294ecd0e0f08eab7690d2a6ee69;x", "val=***;x"},
      {"",         "5ebe2294ecd0e0f08eab7690d2a6ee6", "5ebe2294ecd0e0f08eab7690d2a6ee6"},
      {"",         "id=5ebe2294ecd0e0f08",     "id=***",   CUT},
      // Truncated secrets.
      {"s&cret",   "pass=s&c",                 "pass=***", CUT},
      {"s&cret",   "pass=s%2",                 "pass=***", CUT},
      {"s&cret",   "pass=s%",                  "pass=**",  CUT},
      {"s&cret",   "pass=s",                   "pass=*",   CUT},
      {"s&cret",   "pass=s&amp;",              "pass=***", CUT},
      {"s&cret",   "pass=s&a",                 "pass=***", CUT},
      {"s'cret",   "pass=s&#3",                "pass=***", CUT},
      {"s'cret",   "pass=s\\u00",              "pass=***", CUT},
      {"s'cret",   "pass=s&x y",               "pass=s&x y", CUT},
      {"s&cret",   "pass=s&c",                 "pass=s&c"},     // not truncated
      // clang-format on
  };
  for (const auto& row : ROWS) {
    settings_record settings{};
    settings.set_text(windfinder_password, row.secret);
    EXPECT_EQ(hidden_in(row.text, settings, row.was_cut), row.shown) << row.secret;
  }
}

// If the shorter secret were hidden first, the rest of the longer one would be printed.
TEST(HideSecrets, HidesTheLongestOfThoseThatFit) {
  settings_record settings{};
  settings.set_text(windfinder_password, "pass");
  settings.set_text(wunderground_password, "password");
  EXPECT_EQ(hidden_in("password", settings), "***");
}

}  // namespace
}  // namespace skypost::testing
