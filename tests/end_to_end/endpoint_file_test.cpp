// What a run does with an endpoint file that it cannot take: no line and no fault of the file sends a password to the
// built-in server instead.

#include <filesystem>
#include <regex>
#include <set>
#include <sstream>

#include "base/paths.h"
#include "end_to_end/program.h"
#include "run/run_list.h"

namespace skypost::testing {
namespace {

namespace fs = std::filesystem;

class endpoint_file : public program {
 protected:
  endpoint_file() {
    interpose("HASTE", "100");
    interpose("TRACE", all.board.root() / "trace");
    all.board.write(LAST_RUN_PATH, "1");
  }

  // The names that a run reports failures under. Each has a text.
  std::set<std::string> failures_of_a_run() {
    all.board.write("/trace", "");
    all.board.forget_alarms();
    all.peers.forget_requests();
    errors = run_well().errors;
    std::set<std::string> names;
    for (const sim::alarm_call& call : all.board.alarms()) {
      EXPECT_NE(call[2], "") << call[1];
      names.insert(call[1]);
    }
    return names;
  }

  // All that it asked wget for.
  std::set<std::string> servers_asked() const {
    std::istringstream calls(all.board.read("/trace"));
    std::set<std::string> servers;
    std::smatch part;
    for (std::string call; std::getline(calls, call);)
      if (std::regex_search(call, part, std::regex("https?://[^/?\"]+"))) servers.insert(part.str());
    return servers;
  }

  void expect_nothing_sent() {
    std::set<std::string> expected;
    for (const run_step& step : run_list())
      if (step.upload->carried_by != carrier::file) expected.insert(step.name.text);
    EXPECT_EQ(failures_of_a_run(), expected);
    EXPECT_EQ(servers_asked(), std::set<std::string>{"https://refused.invalid"});
    EXPECT_EQ(requests(), 0);
    EXPECT_TRUE(all.cwop->sessions().empty());
    EXPECT_TRUE(all.aprs->sessions().empty());
    EXPECT_TRUE(all.mail.mails().empty());
    EXPECT_EQ(all.board.read("/trace").find("sendmail"), std::string::npos);
    // Files are no affair of a server's.
    EXPECT_TRUE(fs::exists(all.board.path("/srv/www/wetterspiegel.txt")));
  }

  std::string errors;
};

TEST_F(endpoint_file, with_a_bad_line_for_every_name_has_nothing_sent) {
  std::string lines;
#define ENDPOINT(name, kind, value) lines += #name " = http://x\";id\n";
#include "base/endpoints.def"
  all.board.write(ENDPOINTS_PATH, lines);
  all.board.settings.set_text(sender_address, "");
  all.board.save_settings();
  expect_nothing_sent();
  EXPECT_EQ(std::count(errors.begin(), errors.end(), '\n'), std::count(lines.begin(), lines.end(), '\n'));
}

TEST_F(endpoint_file, that_cannot_be_read_has_nothing_sent) {
  fs::remove(all.board.path(ENDPOINTS_PATH));
  fs::create_directory(all.board.path(ENDPOINTS_PATH));
  expect_nothing_sent();
  EXPECT_EQ(errors,
            "Error: " + all.board.path(ENDPOINTS_PATH).string() + ": Is a directory; all uploads fail\n");
}

// Every other network is served, those after it in the list too.
TEST_F(endpoint_file, with_one_bad_line_keeps_back_one_upload) {
  const std::string good = all.board.read(ENDPOINTS_PATH);
  const std::pair<std::string, std::set<std::string>> cases[] = {
      {"awekas = https://www.awekas.at/?", {"awekas-push"}},
      {"sauerlandwetter = https://host:0", {"sauerlandwetter"}},
      {"cwop_second = cwop.aprs.net:14580", {"CWOP"}},
      {"borgervejr_recipient = me", {"borgervejr"}},
      {"mail_sender = me", {}},  // the settings name one
  };
  for (const auto& [line, failed] : cases) {
    SCOPED_TRACE(line);
    all.board.write(ENDPOINTS_PATH, good + line + '\n');
    EXPECT_EQ(failures_of_a_run(), failed);
    EXPECT_EQ(requests("idokep"), 1);
  }
}

// A path of the owner's, and a sign of success: by GET, with a record, and by POST.
TEST_F(endpoint_file, moves_a_network) {
  enable_only({&windit_enabled, &awekas_enabled, &anythingweather_enabled});
  const std::string good = all.board.read(ENDPOINTS_PATH);
  const auto moved = [&](const std::string& name, const std::string& rest) {
    std::smatch server;
    EXPECT_TRUE(std::regex_search(good, server, std::regex(name + " = http://[0-9.:]+")));
    return server.str() + rest + '\n';
  };
  // The peers refuse another path than their own; AWEKAS' one then says that it is too early.
  all.board.write(ENDPOINTS_PATH, good + moved("windit", "/a/b.php") + moved("awekas", "/c.php try again") +
                                      moved("anythingweather", "/d.asp"));
  EXPECT_EQ(failures_of_a_run(), (std::set<std::string>{"windit", "anythingweather"}));
  std::string targets;
  for (const sim::request_seen& seen : all.peers.requests())
    targets += seen.request.substr(0, 12) + '|' + seen.fault + '\n';
  EXPECT_EQ(targets, "GET /c.php?v|path /c.php\nGET /a/b.php|path /a/b.php\nPOST /d.asp\n|path /d.asp\n");
}

}  // namespace
}  // namespace skypost::testing
