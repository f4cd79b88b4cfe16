// The servers: where a station's password goes by default, and what the owner's file can change.

#include "base/endpoints.h"

#include <gtest/gtest.h>

#include <map>
#include <string>

#include "base/paths.h"
#include "support/appliance_folder.h"

namespace skypost::testing {
namespace {

using values = std::map<std::string, std::string>;

const values& defaults() {
  static const values DEFAULTS = {
      {"wunderground", "https://weatherstation.wunderground.com"},
      {"wunderground_rapid", "https://rtupdate.wunderground.com"},
      {"weatherflow", "http://pws.weatherflow.com"},
      {"metoffice", "https://wow.metoffice.gov.uk"},
      {"pwsweather", "https://www.pwsweather.com"},
      {"weatherbug", "http://data.backyard2.weatherbug.com"},
      {"awekas", "http://www.awekas.at"},
      {"wedaal", "http://www.wedaal.de"},
      {"windfinder", "http://www.windfinder.com"},
      {"windit", "http://windit.invalid"},
      {"idokep", "https://automata.idokep.hu"},
      {"idokep_pro", "https://pro.idokep.hu"},
      {"wetterarchiv", "http://www.wetterarchiv.de"},
      {"anythingweather", "http://www.anythingweather.com"},
      {"meteonews", "meteonews.invalid"},
      {"shnetz", "http://sh-netz.invalid"},
      {"regiowetter_bw", "http://regiowetter-bw.invalid"},
      {"regiowetter", "http://regiowetter.invalid"},
      {"sauerlandwetter", "http://www.sauerlandwetter.de"},
      {"wetterring", "http://wetterring.invalid"},
      {"cwop_first", "cwop.aprs.net"},
      {"cwop_second", "rotate.aprs2.net"},
      {"borgervejr_recipient", "borgervejr@dmi.dk"},
      {"mail_sender", "root@localhost"},
  };
  return DEFAULTS;
}

class Endpoints : public ::testing::Test {
 protected:
  ~Endpoints() override { reset_endpoints(); }

  // Loads an override file and returns what it printed to standard error.
  std::string load(const std::string& file) {
    appliance.write(ENDPOINTS_PATH, file);
    ::testing::internal::CaptureStderr();
    load_endpoints();
    return ::testing::internal::GetCapturedStderr();
  }

  static values in_force() {
    values result;
    for (int row = 0; row < static_cast<int>(endpoint::COUNT); ++row)
      result[endpoint_name(static_cast<endpoint>(row))] = endpoint_value(static_cast<endpoint>(row));
    return result;
  }

  static values changed(const values& rows) {
    values result = defaults();
    for (const auto& [name, value] : rows) result[name] = value;
    return result;
  }

  appliance_folder appliance;
};

std::string fault(int line, const char* what) {
  return "Error: /etc/skypost/endpoints line " + std::to_string(line) + ": " + what + "\n";
}

TEST_F(Endpoints, StandAtTheirDefaultsWithoutAFile) {
  ::testing::internal::CaptureStderr();
  load_endpoints();
  EXPECT_EQ(::testing::internal::GetCapturedStderr(), "");
  EXPECT_EQ(in_force(), defaults());
}

TEST_F(Endpoints, AreOverriddenRowByRow) {
  EXPECT_EQ(load("# the servers of this house\n"
                 "\n"
                 "  awekas = https://www.awekas.at   # by TLS\r\n"
                 "windit=http://192.168.1.7:8080\n"
                 "meteonews\t=\tmeteo-news.example:65535\n"
                 "cwop_first = 127.0.0.1\n"
                 "mail_sender = first.last+tag_x-y@station.example\n"
                 "wedaal = http://first.example\n"
                 "wedaal = http://second.example:1"),
            "");
  EXPECT_EQ(in_force(), changed({{"awekas", "https://www.awekas.at"},
                                 {"windit", "http://192.168.1.7:8080"},
                                 {"meteonews", "meteo-news.example:65535"},
                                 {"cwop_first", "127.0.0.1"},
                                 {"mail_sender", "first.last+tag_x-y@station.example"},
                                 {"wedaal", "http://second.example:1"}}));
}

TEST_F(Endpoints, GoBackToTheirDefaultsWithTheNextFile) {
  load("awekas = https://www.awekas.at\n");
  load("windit = http://windit.example\n");
  EXPECT_EQ(in_force(), changed({{"windit", "http://windit.example"}}));
}

// Each bad line is named and skipped; what stands behind it counts.
TEST_F(Endpoints, KeepOutEveryValueThatCouldLeaveItsPlace) {
  const std::string bad_values[] = {
      // name, then values that it does not take
      "awekas =",
      "awekas = www.awekas.at",
      "awekas = ftp://www.awekas.at",
      "awekas = http://",
      "awekas = http:///",
      "awekas = http://host/",
      "awekas = http://host/path",
      "awekas = http://host?x=1",
      "awekas = http://user@host",
      "awekas = http://host:",
      "awekas = http://host:0",
      "awekas = http://host:65536",
      "awekas = http://host:4294967377",
      "awekas = http://host:80a",
      "awekas = http://host:-1",
      "awekas = http://host:80:80",
      "awekas = http://-host",
      "awekas = http://host-",
      "awekas = http://.host",
      "awekas = http://host two",
      "awekas = http://host http://other",
      "awekas = http://h\"ost",
      "awekas = http://h'ost",
      "awekas = http://h`id`ost",
      "awekas = http://h$(id)ost",
      "awekas = http://h\\ost",
      "awekas = http://h;ost",
      "awekas = http://h&ost",
      "awekas = http://h|ost",
      "awekas = http://h%41ost",
      "awekas = http://h\xc3\xb6st",
      "awekas = http://h" + std::string(1, '\0') + "ost",
      "awekas = http://" + std::string(121, 'a'),
      "meteonews = http://meteonews.example",
      "meteonews = -O:80",
      "cwop_first = cwop.example:14580",
      "cwop_second = -h",
      "mail_sender = root",
      "mail_sender = @localhost",
      "mail_sender = root@",
      "mail_sender = -oQ@localhost",
      "mail_sender = a b@localhost",
      "mail_sender = a@b@localhost",
      "mail_sender = root@localhost\t-X",
  };
  std::string file;
  std::string expected;
  int number = 0;
  for (const std::string& line : bad_values) {
    file += line + "\n";
    expected += fault(++number, "not a value for this name");
  }
  EXPECT_EQ(load(file + "wedaal = http://wedaal.example\n"), expected);
  EXPECT_EQ(in_force(), changed({{"wedaal", "http://wedaal.example"}}));
}

TEST_F(Endpoints, NameLinesThatAreNoRow) {
  EXPECT_EQ(load("awekas\n"
                 "Awekas = http://a.example\n"
                 "= http://a.example\n"
                 "windit = http://" +
                 std::string(600, 'a') +
                 " = http://b.example\n"
                 "# " +
                 std::string(100, '-') +
                 "\n"
                 "awekas http://a.example"),
            fault(1, "no \"name = value\"") + fault(2, "no such name") + fault(3, "no such name") +
                fault(4, "too long") + fault(6, "no \"name = value\""));
  EXPECT_EQ(in_force(), defaults());
}

TEST_F(Endpoints, TakeAValueOfTheLongestSize) {
  const std::string longest = "http://" + std::string(120, 'a');
  EXPECT_EQ(load("windit = " + longest), "");
  EXPECT_EQ(in_force(), changed({{"windit", longest}}));
}

}  // namespace
}  // namespace skypost::testing
