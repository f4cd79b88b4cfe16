#include <fnmatch.h>

#include <cstdlib>
#include <filesystem>
#include <utility>

#include "base/paths.h"
#include "end_to_end/program.h"

namespace skypost::testing {
namespace {

// Ends the program, too, when a descriptor or a child is left over.
class failing_calls : public program {
 protected:
  static constexpr int CALL_NEVER_CAME = 99;

  // `calls` as the library takes them: NAME:N or NAME:N-M.
  sim::run_result run_failing(const std::string& calls) {
    all.board.forget_alarms();
    all.board.write(LAST_RUN_PATH, "1");
    all.board.write("/trace", "");
    all.peers.forget_requests();
    interpose("HASTE", "100");
    interpose("TRACE", all.board.root() / "trace");
    interpose("FAIL", calls);
    return all.board.run();
  }
};

// What a failing call makes the program say, and that it goes on.
struct failure_case {
  const char* calls;
  std::initializer_list<const integer_field*> enabled;  // Idokep, the last step, always is
  const char* alarm;                                    // the name that is reported; "": none
  const char* text;                                     // reported with it; "*" matches anything
  const char* errors = "";                              // on standard error
  int status = 0;
  bool goes_on = true;  // to Idokep
};

// The first `popen` asks for the hardware address, the first `read` and the second `open` are for the
// settings, the first `socket` and `connect` for the data server.
const failure_case CASES[] = {
    // clang-format off
    // The data server.
    {"socket:1",     {}, "", "", "error make socket 127.0.0.1:5558: Input/output error\n", 0, false},
    {"setsockopt:1", {}, "", "", "error set socket options 127.0.0.1:5558: Input/output error\n", 0, false},
    {"setsockopt:2", {}, "", "", "error set socket options 127.0.0.1:5558: Input/output error\n", 0, false},
    {"connect:1",    {}, "", "", "error connect socket 127.0.0.1:5558 :Input/output error\n", 0, false},
    {"recv:1",       {}, "", "", "error read socket: Input/output error", 0, false},
    {"recv:4-9",     {}, "", ""},  // what came before is used
    // The settings: the third attempt still counts.
    {"open64:2-3",  {}, "", ""},
    {"fstat64:1-2", {}, "", ""},
    {"read:1-2",    {}, "", ""},
    {"fstat64:1-3", {}, "Can't read nimbulog settings file", "", "", 1, false},
    {"read:1-3",    {}, "Can't read nimbulog settings file", "", "", 1, false},
    // HTTP.
    {"popen:2", {&wunderground_enabled}, "weather underground", R"(error open pipe (Input/output error): /usr/bin/wget -U nimbulog -t 4 -q -O /dev/stdout "http://127.0.0.1:*/weatherstation/updateweatherstation.php?*")"},
    {"popen:2", {&weatherflow_enabled}, "weatherflow", R"(error open pipe /usr/bin/wget -U nimbulog -t 4 -q -O /dev/stdout "http://127.0.0.1:*/wxengine/rest/collection/weatherstation?*": Input/output error)"},
    {"fread:3", {&windfinder_enabled},   "windfinder", "no response from windfinder"},
    {"fgets:1", {&windfinder_enabled},   "", ""},  // only the hardware address is not there
    // Pull files: the copy in the first directory stays.
    {"fopen64:5", {&hetweeractueel_enabled}, "hetweeractueel", "error open file */srv/www/hetweeractueel.txt: Input/output error\n"},
    {"fopen64:6", {&hetweeractueel_enabled}, "hetweeractueel", "error open file */var/run/nimbulog/uploads/hetweeractueel.txt: Input/output error\n"},
    // Mail.
    {"popen:2", {&borgervejr_enabled}, "borgervejr", "error pipe open: */opt/sbin/sendmail -C */home/nimbulog/esmtprc observations@localhost 2>&1 | /usr/bin/logger: Input/output error"},
    // APRS: no second server, so a fault in reaching it ends the session; later ones are tried again.
    {"socket:2",        {&aprs_enabled}, "APRS", "error socket init: Input/output error, "},
    {"gethostbyname:1", {&aprs_enabled}, "APRS", "error socket open (1) \"127.0.0.1\": Input/output error, "},
    {"connect:2",       {&aprs_enabled}, "APRS", "error socket open (1) \"127.0.0.1\": Input/output error, "},
    {"send:1",          {&aprs_enabled}, "", ""},
    {"read:2",          {&aprs_enabled}, "", ""},
    {"send:1-5",        {&aprs_enabled}, "APRS",
     "error socket write (1) \"127.0.0.1\": Input/output error, error socket write (2) \"127.0.0.1\": Input/output error, "
     "error socket write (3) \"127.0.0.1\": Input/output error, error socket write (4) \"127.0.0.1\": Input/output error, "
     "error socket write (5) \"127.0.0.1\": Input/output error, "},
    // CWOP has a second server; without a socket there is none.
    {"gethostbyname:1", {&cwop_enabled}, "", ""},
    {"connect:2",       {&cwop_enabled}, "", ""},
    {"connect:2-3",     {&cwop_enabled}, "CWOP", "error socket open (1) \"127.0.0.1\": Input/output error, error socket open (1) \"127.0.0.1\": Input/output error, "},
    {"socket:2",        {&cwop_enabled}, "CWOP", "error socket init: Input/output error, "},
    // clang-format on
};

TEST_F(failing_calls, are_reported_by_name_and_the_run_goes_on) {
  for (const failure_case& one : CASES) {
    SCOPED_TRACE(one.calls + std::string(" ") + one.alarm);
    enable_only(one.enabled);
    all.board.settings.set_integer(idokep_enabled, 1);
    all.board.save_settings();

    const sim::run_result run = run_failing(one.calls);
    EXPECT_EQ(run.signal, 0);
    EXPECT_EQ(run.status, one.status);
    EXPECT_EQ(run.errors, one.errors);
    EXPECT_EQ(requests("idokep"), one.goes_on ? 1 : 0);
    const auto alarms = all.board.alarms();
    ASSERT_EQ(alarms.size(), *one.alarm == '\0' ? 0U : 1U);
    if (alarms.empty()) continue;
    EXPECT_EQ(alarms[0][1], one.alarm);
    EXPECT_EQ(fnmatch(one.text, alarms[0][2].c_str(), FNM_NOESCAPE), 0) << alarms[0][2];
  }
}

// The board has no room for another process: nothing can be sent over HTTP and nobody alarmed, but what needs no
// process is done, and the run comes to its end.
TEST_F(failing_calls, leave_a_run_its_files_when_no_process_can_be_started) {
  enable_only({&windfinder_enabled, &hetweeractueel_enabled, &borgervejr_enabled, &idokep_enabled});
  setenv("LSAN_OPTIONS", "detect_leaks=0", 1);  // its search starts a process
  const sim::run_result run = run_failing("fork:2");
  unsetenv("LSAN_OPTIONS");
  EXPECT_EQ(run.signal, 0);
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.errors, "");
  EXPECT_EQ(requests(), 0);
  EXPECT_TRUE(all.board.alarms().empty());
  EXPECT_NE(all.board.read("/var/run/nimbulog/uploads/hetweeractueel.txt"), "");
}

// On a full disk the last-run file and the first copy of a pull file come to nothing; the rest of the run does
// not.
TEST_F(failing_calls, leave_a_run_its_networks_when_the_disk_is_full) {
  enable_only({&hetweeractueel_enabled, &idokep_enabled});
  std::filesystem::create_symlink("/dev/full", all.board.path("/srv/www/hetweeractueel.txt"));
  std::filesystem::create_symlink("/dev/full", all.board.path(LAST_RUN_PATH));
  const sim::run_result run = run_well();
  EXPECT_EQ(run.errors, "");
  EXPECT_NE(all.board.read("/var/run/nimbulog/uploads/hetweeractueel.txt").find("\nEOF\n"),
            std::string::npos);
  EXPECT_EQ(requests("idokep"), 1);
}

// A call of the C library that can fail, and how often a run makes it at least.
using call_row = std::pair<std::string, int>;

const call_row CALLS[] = {
    // clang-format off
    {"open64", 2},  {"fstat64", 1},    {"read", 2},    {"close", 4},
    {"fopen64", 9}, {"fread", 8},      {"fwrite", 4},  {"setvbuf", 4}, {"getc", 500}, {"fclose", 8},
    {"socket", 2},  {"setsockopt", 1}, {"connect", 2}, {"recv", 3},    {"send", 1},   {"gethostbyname", 1},
    {"popen", 7},   {"fgets", 1},      {"fputs", 1},   {"pclose", 7},  {"system", 1},
    {"time", 5},    {"setenv", 1},  {"sigaction", 3},  {"sigprocmask", 1},
    // clang-format on
};

class each_call : public failing_calls, public ::testing::WithParamInterface<call_row> {};

// Whichever call it is, the run goes on to its last step, loses no more than the step at hand, and leaves
// nothing open.
TEST_P(each_call, may_fail_at_any_time) {
  const auto [name, least_calls] = GetParam();
  // By these the appliance's endpoint file becomes unreadable: nothing may go to the real servers.
  const bool asks_networks = name != "fopen64" && name != "getc";
  if (asks_networks) {
    enable_only({&awekas_enabled, &meteonews_enabled, &windfinder_enabled, &hetweeractueel_enabled,
                 &wetterarchiv_enabled, &wunderground_enabled, &aprs_enabled, &borgervejr_enabled,
                 &idokep_enabled});
    all.peers.set_reply("windfinder", sim::reply_kind::bad);
  } else {
    enable_only({&hetweeractueel_enabled, &wetterpage24_enabled, &aprs_enabled, &borgervejr_enabled});
  }

  int number = 1;
  // Single characters are read by the thousand.
  for (;; number += number < 40 ? 1 : number) {
    SCOPED_TRACE(number);
    const sim::run_result run = run_failing(name + ':' + std::to_string(number));
    ASSERT_EQ(run.signal, 0);
    ASSERT_LT(number, 1'000'000) << "the program leaves without a look at its calls";
    if (run.status == CALL_NEVER_CAME) break;
    EXPECT_EQ(run.status, 0);
    EXPECT_LT(run.seconds, 10);
    const bool has_report = !run.errors.starts_with("error ");
    const std::string last_step = asks_networks ? "/sendws.php" : "/opt/sbin/sendmail";
    EXPECT_EQ(all.board.read("/trace").find(last_step) != std::string::npos, has_report) << run.errors;
    EXPECT_TRUE(has_report || all.peers.requests().empty());
    // The one that refuses and the one that is hit; half a report is refused by others, too.
    EXPECT_LE(all.board.alarms().size(), name == "recv" ? 6U : 2U);
  }
  EXPECT_GT(number, least_calls);
}

INSTANTIATE_TEST_SUITE_P(failing, each_call, ::testing::ValuesIn(CALLS),
                         [](const auto& row) { return row.param.first; });

}  // namespace
}  // namespace skypost::testing
