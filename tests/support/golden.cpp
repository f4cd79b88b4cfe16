#include "support/golden.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <utility>
#include <vector>

#include "sim/folder.h"
#include "support/pattern.h"

namespace skypost::testing {
namespace {

// Lines to compare. The values of a command or record are on one line, so it is broken between them.
std::vector<std::string> in_pieces(const std::string& text) {
  std::vector<std::string> pieces(1);
  for (const char character : text) {
    if (character == '&' || character == ';') pieces.emplace_back();
    if (character == '\n')
      pieces.emplace_back();
    else
      pieces.back() += character == '\r' ? "\\r" : std::string(1, character);
  }
  return pieces;
}

std::string difference(const std::string& golden, const std::string& text) {
  return ::testing::internal::edit_distance::CreateUnifiedDiff(in_pieces(golden), in_pieces(text));
}

}  // namespace

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
  const char* const REPEATED = "<(\\d+) (.)>";
  for (auto part = first_match(text, REPEATED); !part.empty(); part = first_match(text, REPEATED))
    text = replaced(text, part[0], std::string(std::stoul(part[1]), part[2][0]));
  const char* const NUMBER = "\\\\x([0-9A-Fa-f]{2})";
  for (auto part = first_match(text, NUMBER); !part.empty(); part = first_match(text, NUMBER))
    text = replaced(text, part[0], std::string(1, static_cast<char>(std::stoi(part[1], nullptr, 16))));
  return text;
}

void expect_golden(const std::string& name, const std::string& text) {
  const std::filesystem::path golden = TESTS_DIRECTORY "/" + name;
  const std::filesystem::path place = COMPOSED_DIRECTORY "/" + name;
  const bool is_there = std::filesystem::exists(golden);
  const std::string wanted = sim::read_file(golden);
  if (is_there && wanted == text) {
    std::filesystem::remove(place);
    return;
  }
  std::filesystem::create_directories(place.parent_path());
  std::ofstream(place, std::ios::binary) << text;
  ADD_FAILURE() << "tests/" << name << (is_there ? " differs from " : " is missing; it would be ") << place
                << '\n'
                << (is_there ? difference(wanted, text) : text);
}

void expect_cases(const std::string& name, const std::function<std::string(const std::string& one)>& run) {
  std::istringstream golden(read_whole_file(TESTS_DIRECTORY "/" + name));
  std::string replayed;
  for (std::string line; std::getline(golden, line);) {
    if (line.starts_with("    ")) continue;
    const std::string one = line.substr(0, line.find(" => "));
    const std::string result = one.starts_with('#') ? "" : run(one);
    replayed += one + (result.empty() ? "" : " => " + result) + '\n';
  }
  expect_golden(name, replayed);
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
