#include "support/golden.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <utility>

#include "sim/folder.h"
#include "support/pattern.h"

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

std::string without_escapes(std::string text) {
  const std::pair<const char*, std::string> ESCAPES[] = {
      {"\\n", "\n"}, {"\\r", "\r"}, {"\\t", "\t"}, {"\\e", "\x1b"}, {"\\0", std::string(1, '\0')}};
  for (const auto& [escape, byte] : ESCAPES) text = replaced(text, escape, byte);
  const char* const NUMBER = "\\\\x([0-9A-Fa-f]{2})";
  for (auto part = first_match(text, NUMBER); !part.empty(); part = first_match(text, NUMBER))
    text = replaced(text, part[0], std::string(1, static_cast<char>(std::stoi(part[1], nullptr, 16))));
  return text;
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
