// Which servers the owner's endpoint file can change, since a station's password goes to them. The defaults are in the
// networks' golden texts.

#include "base/endpoints.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "base/paths.h"
#include "support/appliance_folder.h"

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

  // Loads an endpoint file; expects what it prints to standard error, and that it changes these rows alone.
  void expect_loaded(const std::string& file, const std::string& errors, const values& changes) {
    appliance.write(ENDPOINTS_PATH, file);
    ::testing::internal::CaptureStderr();
    load_endpoints();
    EXPECT_EQ(::testing::internal::GetCapturedStderr(), errors);
    values expected = defaults;
    for (const auto& [row, value] : changes) expected[row] = value;
    EXPECT_EQ(in_effect(), expected);
  }

  // What is said of a bad line that begins with a known name, and of another.
  std::string refused(int line, const std::string& what, const std::string& name) const {
    return "Error: " + path.string() + " line " + std::to_string(line) + ": " + what + "; uploads that use " +
           name + " fail unless a later line sets it\n";
  }
  std::string skipped(int line, const std::string& what) const {
    return "Error: " + path.string() + " line " + std::to_string(line) + ": " + what +
           "; the line is skipped\n";
  }

  static bool is_each_refused() {
    for (const auto& [row, value] : in_effect())
      if (!is_refused(row) || value.empty()) return false;
    return true;
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

// Every byte except letters, digits, `allowed` and those that end the value or the line, with a letter after it.
std::vector<std::string> every_byte_but(const std::string& allowed) {
  std::vector<std::string> texts;
  for (int byte = 0; byte < 256; ++byte) {
    const char character = static_cast<char>(byte);
    if (!is_alphanumeric({&character, 1}, allowed + "\n# \t\r"))
      texts.push_back(std::string(1, character) + 'b');
  }
  return texts;
}

constexpr char REFUSED_URL[] = "https://refused.invalid";
constexpr char INVALID[] = "invalid value for this name";
constexpr char SLASH[] = "remove the trailing slash";
constexpr char NO_PATH[] = "this name takes no path";
constexpr char NOTHING_AFTER[] = "unexpected text after the value";
constexpr char PATH[] = "a path can only contain letters, digits and . _ ~ / -";
constexpr char LONG[] = "longer than 127 characters";

// No value leaves its place in a command, a URL or a line, and none of a bad line goes to the built-in server. What
// comes after it counts.
TEST_F(Endpoints, RefuseEveryValueThatCouldLeaveItsPlace) {
  const struct {
    endpoint row;
    std::string start;
    std::string what;
    std::vector<std::string> bad_values;
  } cases[] = {
      {endpoint::awekas,
       "",
       INVALID,
       {"", "www.awekas.at", "ftp://www.awekas.at", "http://", "http:///", "http://host?x=1",
        "http://user@host", "/", "//host/path", "\"http://host\""}},
      {endpoint::awekas,
       "http://host",
       INVALID,
       {":", ":0", ":65536", ":4294967377", ":80a", ":-1", ":80:80", "-", ":/path", "\\/path"}},
      {endpoint::awekas,
       "http://",
       INVALID,
       {"-host", ".host", "h\"ost", "h'ost", "h`id`ost", "h$(id)ost", "h\\ost", "h;ost", "h&ost", "h|ost",
        "h%41ost", "h\xc3\xb6st", "h" + std::string(1, '\0') + "ost"}},
      {endpoint::awekas, "http://host", SLASH, {"/", ":8080/", "//", "/ OK", "/  # from a browser"}},
      {endpoint::awekas, "https://host/a", PATH, every_byte_but("._~/-")},
      {endpoint::awekas, "http://host/", LONG, {std::string(116, 'a')}},
      {endpoint::awekas, "http://", LONG, {std::string(121, 'a')}},
      {endpoint::awekas, "http://host ", "a success text has at most 60 characters", {std::string(61, 'a')}},
      {endpoint::awekas,
       "http://host a",
       "a success text can only contain printable ASCII characters",
       {"\tb", "\rb", "\x7f", "\xc3\xb6", "\x1b[m", std::string(1, '\0') + "b"}},
      {endpoint::meteonews, "", INVALID, {"http://meteonews.example", "-O:80"}},
      {endpoint::meteonews, "host", SLASH, {"/"}},
      {endpoint::meteonews, "host", NO_PATH, {":80/path"}},
      {endpoint::meteonews, "host", NOTHING_AFTER, {" OK"}},
      {endpoint::cwop_first, "", INVALID, {"cwop.example:14580", "-h"}},
      {endpoint::cwop_second, "cwop.example", NO_PATH, {"/path"}},
      {endpoint::cwop_second, "cwop.example", NOTHING_AFTER, {" verified", "\tother.example"}},
      {endpoint::aprs_software, "", INVALID, {"", "*", "a,b", "nimb\"ulog", "n\xc3\xb6"}},
      {endpoint::aprs_software,
       "nimbulog",
       NOTHING_AFTER,
       {" 1.0 beta", "  1.0", "\t1.0", " 1.0\r2", " 1,0"}},
      {endpoint::aprs_software, "nimbulog ", LONG, {std::string(119, '1')}},
      {endpoint::aprs_path,
       "",
       INVALID,
       {"", "*", "TCPIP**", "*TCPIP", "TCPIP*,qAC", "TCP:IP", "TCP>IP", "T_P"}},
      {endpoint::aprs_path, "TCPIP*", NOTHING_AFTER, {" TCPXX*"}},
      {endpoint::aprs_path, "", LONG, {std::string(128, 'A')}},
      {endpoint::mail_sender,
       "",
       INVALID,
       {"root", "@localhost", "root@", "-oQ@localhost", "a b@localhost", "a@b@localhost"}},
      {endpoint::mail_sender, "root@localhost", NOTHING_AFTER, {"\t-X"}},
  };
  for (const auto& row : cases) {
    for (const std::string& value : row.bad_values) {
      SCOPED_TRACE(value);
      const std::string name = endpoint_name(row.row);
      appliance.write(ENDPOINTS_PATH,
                      name + " = " + row.start + value + "\nwedaal = http://wedaal.example\n");
      ::testing::internal::CaptureStderr();
      load_endpoints();
      EXPECT_EQ(::testing::internal::GetCapturedStderr(), refused(1, row.what, name));
      EXPECT_TRUE(is_refused(row.row));
      values expected = defaults;
      expected[row.row] = endpoint_value(row.row);
      expected[endpoint::wedaal] = "http://wedaal.example";
      EXPECT_EQ(in_effect(), expected);
      EXPECT_NE(expected[row.row], defaults.at(row.row));
    }
  }
}

// What a refused row names leads nowhere.
TEST_F(Endpoints, PutANameOfNothingInThePlaceOfARefusedOne) {
  expect_loaded("awekas = x\nmeteonews = x/y\ncwop_first = x/y\nborgervejr_recipient = x\n",
                refused(1, INVALID, "awekas") + refused(2, NO_PATH, "meteonews") +
                    refused(3, NO_PATH, "cwop_first") + refused(4, INVALID, "borgervejr_recipient"),
                {{endpoint::awekas, REFUSED_URL},
                 {endpoint::meteonews, "refused.invalid"},
                 {endpoint::cwop_first, "refused.invalid"},
                 {endpoint::borgervejr_recipient, "nobody@refused.invalid"}});
}

TEST_F(Endpoints, CountTheLastLineOfANameGoodOrBad) {
  expect_loaded(
      "awekas = x\nawekas = http://a.example\nwindit = http://b.example\nwindit = http://b.example/\n",
      refused(1, INVALID, "awekas") + refused(4, SLASH, "windit"),
      {{endpoint::awekas, "http://a.example"}, {endpoint::windit, REFUSED_URL}});
  EXPECT_FALSE(is_refused(endpoint::awekas));
}

TEST_F(Endpoints, TakeAPathAndASuccessText) {
  const std::string longest = "http://host/" + std::string(115, 'a') + " " + std::string(60, '~');
  expect_loaded(
      "awekas = https://data.awekas.at:443/eingabe_pruefung.php\n"
      "pwsweather=https://host/api/v1/a-b_c.d~/  \"success\":true  # since 2026\r\n"
      "windit = http://windit.example\t=  OK =\n"
      "wedaal = " +
          longest,
      "",
      {{endpoint::awekas, "https://data.awekas.at:443/eingabe_pruefung.php"},
       {endpoint::pwsweather, "https://host/api/v1/a-b_c.d~/"},
       {endpoint::windit, "http://windit.example"},
       {endpoint::wedaal, longest.substr(0, 127)}});
  EXPECT_EQ(endpoint_success_text(endpoint::awekas), "");
  EXPECT_EQ(endpoint_success_text(endpoint::pwsweather), "\"success\":true");
  EXPECT_EQ(endpoint_success_text(endpoint::windit), "=  OK =");
  EXPECT_EQ(endpoint_success_text(endpoint::wedaal), std::string(60, '~'));
  const auto url = [](endpoint row) {
    fixed_text<200> text;
    append_url(text, row, "/own/");
    return std::string(text.view());
  };
  EXPECT_EQ(url(endpoint::awekas), "https://data.awekas.at:443/eingabe_pruefung.php");
  EXPECT_EQ(url(endpoint::windit), "http://windit.example/own/");
  EXPECT_EQ(url(endpoint::shnetz), "http://sh-netz.invalid/own/");

  // A later line without them, or a bad one, takes both away.
  expect_loaded("windit = http://a.example/b OK\nwindit = http://a.example", "",
                {{endpoint::windit, "http://a.example"}});
  EXPECT_EQ(endpoint_success_text(endpoint::windit), "");
  expect_loaded("windit = http://a.example/b OK\nwindit = x OK", refused(2, INVALID, "windit"),
                {{endpoint::windit, REFUSED_URL}});
  EXPECT_EQ(endpoint_success_text(endpoint::windit), "");
}

TEST_F(Endpoints, TakeSoftwareAndPathOfAPacket) {
  expect_loaded("aprs_software = nimbulog 1.0\naprs_path = TCPIP*\n", "",
                {{endpoint::aprs_software, "nimbulog 1.0"}, {endpoint::aprs_path, "TCPIP*"}});
  expect_loaded("aprs_software = my_soft-ware.2\naprs_path = WIDE1-1\n", "",
                {{endpoint::aprs_software, "my_soft-ware.2"}, {endpoint::aprs_path, "WIDE1-1"}});
}

// The owner of such a line that begins with a known name wanted something else than the built-in server.
TEST_F(Endpoints, NameLinesThatAreNoRow) {
  const std::string too_long = "windit = http://" + std::string(600, 'a') + " = http://b.example\n";
  expect_loaded(
      "awekas\nAwekas = http://a.example\n= http://a.example\n" + too_long + "# " + std::string(600, '-') +
          "\nwedaal http://a.example/?a=b\nnonsense\n" + std::string(600, ' ') + "\nshnetz" +
          std::string(600, ' ') + "=\nx" + too_long + "meteonews: a.example",
      refused(1, "expected \"name = value\"", "awekas") + skipped(2, "unknown name") +
          skipped(3, "unknown name") + refused(4, "too long", "windit") +
          refused(6, "expected \"name = value\"", "wedaal") + skipped(7, "expected \"name = value\"") +
          skipped(8, "too long") + refused(9, "too long", "shnetz") + skipped(10, "too long") +
          skipped(11, "expected \"name = value\""),
      {{endpoint::awekas, REFUSED_URL},
       {endpoint::windit, REFUSED_URL},
       {endpoint::wedaal, REFUSED_URL},
       {endpoint::shnetz, REFUSED_URL}});
}

TEST_F(Endpoints, HaveTheirDefaultsWithoutAFile) {
  ::testing::internal::CaptureStderr();
  load_endpoints();
  EXPECT_EQ(::testing::internal::GetCapturedStderr(), "");
  EXPECT_EQ(in_effect(), defaults);
}

// Two that are no files (a FIFO would hang the start), and two that cannot be opened.
TEST_F(Endpoints, AreAllRefusedWithAFileThatCannotBeRead) {
  const auto expect_refused = [&](const std::string& reason) {
    ::testing::internal::CaptureStderr();
    load_endpoints();
    EXPECT_EQ(::testing::internal::GetCapturedStderr(),
              "Error: " + path.string() + ": " + reason + "; all uploads fail\n");
    EXPECT_TRUE(is_each_refused());
  };
  std::filesystem::create_directory(path);
  expect_refused("Is a directory");
  std::filesystem::remove(path);
  ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
  expect_refused("No such device or address");
  std::filesystem::remove(path);
  std::filesystem::create_symlink(path, path);
  expect_refused("Too many levels of symbolic links");
  std::filesystem::remove_all(path.parent_path());
  appliance.write("/etc/skypost", "not a directory");
  expect_refused("Not a directory");
}

// What came of the file before the fault counts no more than the half line at the end.
TEST_F(Endpoints, ObeyNothingOfAFileThatCannotBeReadToItsEnd) {
  std::string rows = "awekas = http://a.example\nwedaal = http:";
  const cookie_io_functions_t half_readable = {
      .read = [](void* text, char* buffer, std::size_t size) -> ssize_t {
        std::string& rest = *static_cast<std::string*>(text);
        if (rest.empty()) {
          errno = EIO;
          return -1;
        }
        const std::size_t count = rest.copy(buffer, size);
        rest.erase(0, count);
        return static_cast<ssize_t>(count);
      },
      .write = nullptr,
      .seek = nullptr,
      .close = nullptr};
  std::FILE* const file = fopencookie(&rows, "r", half_readable);
  ::testing::internal::CaptureStderr();
  read_endpoints(file, "endpoints");
  EXPECT_EQ(::testing::internal::GetCapturedStderr(),
            "Error: endpoints: Input/output error; all uploads fail\n");
  std::fclose(file);
  EXPECT_TRUE(is_each_refused());
}

}  // namespace
}  // namespace skypost::testing
