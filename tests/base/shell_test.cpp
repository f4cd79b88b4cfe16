// Whatever bytes a text holds, the real shell hands them on unaltered and runs none of them.

#include "base/shell.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <vector>

namespace skypost::testing {
namespace {

// Every character, and every two of those that mean something to a shell, between others.
std::vector<std::string> awkward_texts() {
  constexpr std::string_view METACHARACTERS = "\"'`$\\(){}[]<>|&;#*?~!=% \t\n\r-x";
  std::vector<std::string> texts = {"", "$(id)", "`id`", "${HOME}", "\\$HOME", "a\n\n", "plain/path-1.2_3"};
  for (int byte = 1; byte < 256; ++byte) texts.emplace_back(1, static_cast<char>(byte));
  for (const char first : METACHARACTERS)
    for (const char second : METACHARACTERS) texts.push_back({first, second, 'x', first});
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
