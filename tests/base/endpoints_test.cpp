// Which servers the owner's endpoint file can change, since a station's password goes to them. The defaults are in the
// networks' golden texts.

#include "base/endpoints.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <string>

#include "base/paths.h"
#include "support/appliance_folder.h"
#include "support/golden.h"

namespace skypost::testing {
namespace {

using values = std::map<endpoint, std::string>;

values in_effect() {
  values result;
  for (int row = 0; row < static_cast<int>(endpoint::COUNT); ++row)
    result[static_cast<endpoint>(row)] = endpoint_value(static_cast<endpoint>(row));
  return result;
}

class Endpoints : public ::testing::Test {
 protected:
  ~Endpoints() override { reset_endpoints(); }

  // Loads an endpoint file; expects this on standard error, and that only these rows change.
  void expect_loaded(const std::string& file, const std::string& errors, const values& changes) {
    appliance.write(ENDPOINTS_PATH, file);
    ::testing::internal::CaptureStderr();
    load_endpoints();
    EXPECT_EQ(::testing::internal::GetCapturedStderr(), errors);
    values expected = defaults;
    for (const auto& [row, value] : changes) expected[row] = value;
    EXPECT_EQ(in_effect(), expected);
  }

  std::string fault(int line, const char* what) const {
    return "Error: " + path.string() + " line " + std::to_string(line) + ": " + what + "\n";
  }

  const values defaults = in_effect();
  appliance_folder appliance;
  const std::filesystem::path path = appliance.path(ENDPOINTS_PATH);
};

TEST_F(Endpoints, AreOverriddenRowByRowAndByTheLastFileAlone) {
  const std::string longest = "http://" + std::string(120, 'a');
  expect_loaded("windit = " + longest + "\nwetterring = http://ring.example", "",
                {{endpoint::windit, longest}, {endpoint::wetterring, "http://ring.example"}});
  expect_loaded(
      "# our servers\n"
      "\n"
      "  awekas = https://www.awekas.at   # by TLS\r\n"
      "windit=http://192.168.1.7:8080\n"
      "meteonews\t=\tmeteo-news.example:65535\n"
      "cwop_first = 127.0.0.1\n"
      "mail_sender = first.last+tag_x-y@station.example\n"
      "wedaal = http://first.example\n"
      "wedaal = http://second.example:1",
      "",
      {{endpoint::awekas, "https://www.awekas.at"},
       {endpoint::windit, "http://192.168.1.7:8080"},
       {endpoint::meteonews, "meteo-news.example:65535"},
       {endpoint::cwop_first, "127.0.0.1"},
       {endpoint::mail_sender, "first.last+tag_x-y@station.example"},
       {endpoint::wedaal, "http://second.example:1"}});
}

// Each is reported and skipped; the line after it counts.
TEST_F(Endpoints, KeepOutEveryValueThatCouldLeaveItsPlace) {
  using namespace std::string_literals;
  const std::string file =
      read_whole_file(TESTS_DIRECTORY "/base/golden/refused_endpoints") + "awekas = http://h\0ost\n"s;
  std::string expected;
  for (int line = 1; line <= std::count(file.begin(), file.end(), '\n'); ++line)
    expected += fault(line, "invalid value for this name");
  expect_loaded(file + "wedaal = http://wedaal.example\n", expected,
                {{endpoint::wedaal, "http://wedaal.example"}});
}

TEST_F(Endpoints, TellWhatIsWrongWithAUrlFromABrowser) {
  expect_loaded("awekas = https://host/\nwindit = http://host:8080/  # \nmeteonews = host/\nawekas = /\n",
                fault(1, "remove the trailing slash") + fault(2, "remove the trailing slash") +
                    fault(3, "remove the trailing slash") + fault(4, "invalid value for this name"),
                {});
}

TEST_F(Endpoints, NameLinesThatAreNoRow) {
  const std::string too_long = "windit = http://" + std::string(600, 'a') + " = http://b.example\n";
  expect_loaded("awekas\nAwekas = http://a.example\n= http://a.example\n" + too_long + "# " +
                    std::string(600, '-') + "\nawekas http://a.example",
                fault(1, "expected \"name = value\"") + fault(2, "unknown name") + fault(3, "unknown name") +
                    fault(4, "too long") + fault(6, "expected \"name = value\""),
                {});
}

// A directory can be opened but not read; then there is no file at all.
TEST_F(Endpoints, HaveTheirDefaultsWithAFileThatCannotBeRead) {
  std::filesystem::create_directory(path);
  ::testing::internal::CaptureStderr();
  load_endpoints();
  EXPECT_EQ(::testing::internal::GetCapturedStderr(), "Error: " + path.string() + ": Is a directory\n");
  std::filesystem::remove(path);
  ::testing::internal::CaptureStderr();
  load_endpoints();
  EXPECT_EQ(::testing::internal::GetCapturedStderr(), "");
  EXPECT_EQ(in_effect(), defaults);
}

}  // namespace
}  // namespace skypost::testing
