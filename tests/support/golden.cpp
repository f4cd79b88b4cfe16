#include "support/golden.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string_view>

#include "sim/folder.h"

namespace skypost::testing {

std::string read_whole_file(const std::string& path) {
  EXPECT_TRUE(std::filesystem::exists(path)) << path;
  return sim::read_file(path);
}

std::string replaced(std::string text, const std::string& from, const std::string& to) {
  for (std::size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size()))
    text.replace(at, from.size(), to);
  return text;
}

std::string without_escapes(const std::string& text) {
  constexpr std::string_view LETTERS = "nrt0e";
  constexpr std::string_view BYTES("\n\r\t\0\x1b", LETTERS.size());
  std::string result;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char letter = text[i] == '\\' ? text[i + 1] : '\0';
    const std::size_t place = LETTERS.find(letter);
    if (letter == 'x') {
      result += static_cast<char>(std::stoi(text.substr(i + 2, 2), nullptr, 16));
      i += 3;
    } else if (place != std::string_view::npos) {
      result += BYTES[place];
      ++i;
    } else {
      result += text[i];
    }
  }
  return result;
}

void expect_golden(const std::string& name, const std::string& text) {
  const std::string golden = TESTS_DIRECTORY "/" + name;
  if (std::filesystem::exists(golden) && read_whole_file(golden) == text) return;
  const std::filesystem::path place = COMPOSED_DIRECTORY "/" + name;
  std::filesystem::create_directories(place.parent_path());
  std::ofstream(place, std::ios::binary) << text;
  if (!std::filesystem::exists(golden))
    FAIL() << "tests/" << name << " is missing; what would be in it: " << place;
  EXPECT_EQ(text, read_whole_file(golden)) << "the first is in " << place;
}

void expect_session(const std::string& name, const std::function<std::string(const std::string& line)>& run) {
  std::istringstream golden(read_whole_file(TESTS_DIRECTORY "/" + name));
  std::string replayed;
  for (std::string line; std::getline(golden, line);) {
    const bool begins_case = line.starts_with("# ");
    if (!begins_case && !line.starts_with("+ ") && !line.starts_with("$ ") && line != "$") continue;
    if (begins_case && !replayed.empty()) replayed += '\n';
    replayed += line + '\n' + run(line);
  }
  expect_golden(name, replayed);
}

}  // namespace skypost::testing
