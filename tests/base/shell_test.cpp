// Whatever bytes a text holds, the real shell hands them on unaltered and runs none of them.

#include "base/shell.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <random>
#include <string>
#include <vector>

namespace skypost::testing {
namespace {

std::vector<std::string> awkward_texts() {
  std::vector<std::string> texts = {"",         "-n",    "--",   "a b",     "\n",    "a\n\n",
                                    "\\",       "\\\\",  "\"",   "'",       "$",     "`",
                                    "!",        "$(id)", "`id`", "${HOME}", "$HOME", "\\$HOME",
                                    "\\`id\\`", "*",     "~",    "a;b",     "%s",    "plain/path-1.2_3"};
  std::string all;
  for (int byte = 1; byte < 256; ++byte) {
    texts.emplace_back(1, static_cast<char>(byte));
    all += static_cast<char>(byte);
  }
  texts.push_back(all);
  constexpr std::string_view METACHARACTERS = "\"'`$\\(){}[]<>|&;#*?~!=% \t\n\rax";
  std::mt19937 random(4711);  // always the same texts
  for (int i = 0; i < 300; ++i) {
    std::string text;
    for (std::size_t left = random() % 12; left > 0; --left)
      text += METACHARACTERS[random() % METACHARACTERS.size()];
    texts.push_back(text);
  }
  return texts;
}

std::string output_of(const char* command) {
  std::FILE* const pipe = popen(command, "r");
  std::string output;
  for (int character = std::getc(pipe); character != EOF; character = std::getc(pipe))
    output += static_cast<char>(character);
  EXPECT_EQ(pclose(pipe), 0);
  return output;
}

TEST(Shell, PassesEveryTextUnaltered) {
  fixed_text<100'000> command;
  std::string expected;
  command.append_text("printf '%s\\0'");
  for (const std::string& text : awkward_texts()) {
    command.append_text(" ");
    append_shell_word(command, text);
    command.append_text(" \"<");
    append_quoted(command, text);
    command.append_text(">\"");
    expected += text + '\0' + "<" + text + ">" + '\0';
  }
  ASSERT_FALSE(command.was_cut());
  EXPECT_EQ(output_of(command.c_str()), expected);
}

}  // namespace
}  // namespace skypost::testing
