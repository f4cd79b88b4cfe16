// Passwords go to the servers of the endpoint file. No value may leave its place in a command, a URL or a line, and a
// bad line must not leave the built-in server in use. The networks' golden texts cover the defaults.

#include "endpoints/endpoint_file.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "base/paths.h"
#include "base/text.h"
#include "endpoints/endpoints.h"
#include "support/appliance_folder.h"
#include "support/golden.h"

namespace skypost::testing {
namespace {

constexpr int ROW_COUNT = static_cast<int>(endpoint::COUNT);

class EndpointFile : public ::testing::Test {
 protected:
  EndpointFile() {
    for (int row = 0; row < ROW_COUNT; ++row) defaults.emplace_back(endpoint_value(endpoint{row}));
  }
  ~EndpointFile() override { reset_endpoints(); }

  // Loads the file; returns what that prints.
  std::string load() const {
    ::testing::internal::CaptureStderr();
    load_endpoints();
    return replaced(::testing::internal::GetCapturedStderr(), path, "endpoints");
  }

  // Like load(), with a line for each endpoint that is not at its default.
  std::string load_and_tell() const {
    std::string lines = load();
    for (int row = 0; row < ROW_COUNT; ++row) {
      const std::string name = endpoint_name(endpoint{row});
      const std::string value = endpoint_value(endpoint{row});
      const std::string text(endpoint_success_text(endpoint{row}));
      if (is_refused(endpoint{row}))
        lines += name + " refused: " + value + '\n';
      else if (value != defaults[static_cast<std::size_t>(row)] || !text.empty())
        lines += name + ": " + value + '\n';
      if (!text.empty()) lines += name + " success text: " + text + '\n';
    }
    return lines;
  }

  std::vector<std::string> defaults;
  appliance_folder appliance;
  const std::filesystem::path path = appliance.path(ENDPOINTS_PATH);
};

// Each line of the golden text is a file of its own, then what it prints and changes; files in a row with the same
// result show it once, after the last.
TEST_F(EndpointFile, OverridesOrRefusesRowByRow) {
  std::istringstream lines(read_whole_file(TESTS_DIRECTORY "/endpoints/golden/endpoint_lines"));
  std::string found, before;
  for (std::string line; std::getline(lines, line);) {
    line.erase(std::min(line.find(" => "), line.size()));
    appliance.write(ENDPOINTS_PATH, without_escapes(line));
    std::string result = load_and_tell();
    if (!result.empty()) result.pop_back();
    result = (result.empty() ? "" : " => ") + replaced(result, "\n", " | ") + '\n';
    if (result == before) found.replace(found.size() - before.size(), before.size(), "\n");
    found += line + result;
    before = result;
  }
  expect_golden("endpoints/golden/endpoint_lines", found);
}

TEST_F(EndpointFile, TakesNoOtherCharacterInAPath) {
  for (int byte = 0; byte < 256; ++byte) {
    const char character = static_cast<char>(byte);
    if (std::string("# \t\r\n").find(character) != std::string::npos) continue;  // these end the path
    appliance.write(ENDPOINTS_PATH, std::string("awekas = https://host/a") + character + 'b');
    load();
    EXPECT_NE(is_refused(endpoint::awekas), is_alphanumeric({&character, 1}, "._~/-")) << byte;
  }
}

// The first two are no regular files (a FIFO would hang the start), the others cannot be opened.
TEST_F(EndpointFile, RefusesEveryRowIfItCannotBeRead) {
  EXPECT_EQ(load_and_tell(), "");  // no file
  constexpr std::pair<const char*, const char*> CASES[] = {
      {"mkdir $f", "Is a directory"},
      {"mkfifo $f", "No such device or address"},
      {"ln -s $f $f", "Too many levels of symbolic links"},
      {"rmdir $d; ln -s nowhere $d", "No such file or directory"},
      {"rm $d; touch $d", "Not a directory"},
  };
  for (const auto& [command, reason] : CASES) {
    const std::string names = "f=" + path.string() + " d=" + path.parent_path().string() + "; rm -rf $f; ";
    ASSERT_EQ(std::system((names + command).c_str()), 0) << command;
    EXPECT_EQ(load(), std::string("Error: endpoints: ") + reason + "; all uploads fail\n");
    for (int row = 0; row < ROW_COUNT; ++row) EXPECT_TRUE(is_refused(endpoint{row})) << row;
  }
}

}  // namespace
}  // namespace skypost::testing
