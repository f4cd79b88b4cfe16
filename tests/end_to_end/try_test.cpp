// `skypost-settings try` must send what a run sends, leave no trace, and print no secret. Its output is in golden/try.

#include <httplib.h>

#include <algorithm>
#include <ctime>
#include <filesystem>
#include <thread>

#include "base/paths.h"
#include "common/field_descriptions.h"
#include "compose/md5.h"
#include "end_to_end/program.h"
#include "run/run_list.h"
#include "support/pattern.h"

namespace skypost::testing {
namespace {

namespace fs = std::filesystem;

class trying : public program {
 protected:
  sim::run_result try_network(const std::string& name) {
    return all.board.run_tool(SETTINGS_PROGRAM, {"try", "--yes", name});
  }

  // What `try` prints on a terminal where `keys` are the answer to its question.
  std::string output_at_terminal(const std::string& arguments, const std::string& keys) {
    const std::string typed =
        keys.empty() ? "true" : "{ until grep -qs y/N shown; do sleep 0.02; done; echo " + keys + "; }";
    const std::string command = "\"" SETTINGS_PROGRAM " try " + arguments + '"';
    all.board.write("/shown", "");
    all.board.run_tool("/bin/sh",
                       {"-c", "cd \"$SKYPOST_ROOT\" && " + typed + " | script -qefc " + command + " shown"});
    return all.board.read("/shown");
  }
};

// Everything that the peers and the pull directories have received.
struct traffic {
  std::vector<std::string> requests, packets, mails, files;

  explicit traffic(const sim::world& all) {
    for (const sim::request_seen& seen : all.peers.requests()) {
      EXPECT_EQ(seen.fault, "") << seen.request;
      requests.push_back(std::string(seen.network->name) + ' ' + seen.request);
    }
    for (const auto* server : {&*all.cwop, &*all.aprs})
      packets.push_back(server->sessions().back().login + '\n' + server->sessions().back().packet);
    const std::string mail = all.mail.mails().back().text;
    mails.push_back(mail.substr(mail.find("\n\n")));  // the mail program adds lines to the header
    for (const char* const directory : PULL_DIRECTORIES)
      for (const auto& entry : fs::directory_iterator(all.board.path(directory)))
        files.push_back(entry.path().string() + '\n' + sim::read_file(entry.path()));
    std::sort(files.begin(), files.end());
  }
};

TEST_F(trying, sends_byte_for_byte_what_a_run_sends_and_keeps_no_trace) {
  interpose("HASTE", "20");
  interpose("TIME", std::to_string(std::time(nullptr)));
  all.board.write(LAST_RUN_PATH, "1");
  run_well();
  const traffic of_run(all);
  all.peers.forget_requests();
  for (const char* const directory : PULL_DIRECTORIES) {
    fs::remove_all(all.board.path(directory));
    fs::create_directories(all.board.path(directory));
  }
  all.board.write(LAST_RUN_PATH, "2");
  all.board.write(STATUS_PATH, "untouched");

  for (const run_step& step : run_list()) {
    const sim::run_result run = try_network(step.upload->id);
    EXPECT_EQ(run.status, 0) << run.output << run.errors;
  }
  const traffic of_tries(all);
  EXPECT_EQ(of_tries.requests, of_run.requests);
  EXPECT_EQ(of_tries.packets, of_run.packets);
  EXPECT_EQ(of_tries.mails, of_run.mails);
  EXPECT_EQ(of_tries.files, of_run.files);
  EXPECT_EQ(all.mail.mails().size(), 2U);
  EXPECT_EQ(all.board.read(LAST_RUN_PATH), "2");
  EXPECT_EQ(all.board.read(STATUS_PATH), "untouched");
  EXPECT_TRUE(all.board.alarms().empty());
}

// The file is read back: here it keeps the end of a longer one, which a run does not see.
TEST_F(trying, believes_no_file_that_does_not_hold_what_was_written) {
  const std::pair<const char*, std::string> FAULTS[] = {
      {"write:1", "awekas.txt was not written: Input/output error\n"},
      {"ftruncate64:2",
       all.board.path(PULL_DIRECTORIES[1]).string() + "awekas.txt does not hold what was written\n"},
  };
  for (const auto& [call, reason] : FAULTS) {
    for (const char* const directory : PULL_DIRECTORIES)
      all.board.write(std::string(directory) + "awekas.txt", std::string(9'000, 'x'));
    interpose("FAIL", call);
    const sim::run_result run = try_network("awekas_pull");
    EXPECT_NE(run.output.find("\nawekas-pull: UNCLEAR: " + reason), std::string::npos) << run.output;
    EXPECT_NE(run.status, 0);
  }
}

TEST_F(trying, asks_first) {
  for (const auto& [keys, count] : {std::pair<std::string, int>{"yes", 0}, {"y", 1}}) {
    all.peers.forget_requests();
    const std::string output = output_at_terminal("windfinder", keys);
    EXPECT_NE(output.find("Send it? [y/N] "), std::string::npos) << output;
    EXPECT_EQ(requests("windfinder"), count) << output;
  }
}

// In the background of a terminal, wget would write its messages to a file, but some networks are judged by them.
TEST_F(trying, hears_wget_at_a_terminal_too) {
  all.board.write(ENDPOINTS_PATH, all.board.read(ENDPOINTS_PATH) + "idokep = http://127.0.0.1:1\n");
  const std::string output = output_at_terminal("--yes anythingweather", "");
  EXPECT_NE(output.find("anythingweather: ACCEPTED\r\n"), std::string::npos) << output;
  EXPECT_NE(output_at_terminal("--yes idokep", "").find("Connection refused."), std::string::npos);
  EXPECT_FALSE(fs::exists(all.board.path("/wget-log")));
}

// No secret may be printed even if a server echoes the request, as it came and decoded, and a digest, or if the command
// cannot be run. A long reply is printed in full below the reason, which quotes its beginning.
TEST_F(trying, tells_no_secret) {
  constexpr char SECRET[] = "Zq\"1&x #%`<\\|";  // its first two characters are never encoded
  md5_text digest;
  md5_hex(SECRET, digest);
  for (const field_description& row : FIELD_DESCRIPTIONS)
    if (row.field.is_secret() && row.field.is_text()) all.board.settings.set_text(row.as_text(), SECRET);
  all.board.save_settings();
  all.board.write(PROCESSOR_PATH, "Hardware : Linksys NSLU2\n");  // so MeteoNews needs no TLS

  httplib::Server server;
  const auto echo = [&](const httplib::Request& request, httplib::Response& response) {
    const std::string asked = request.target + '\n' + request.body + '\n';
    response.set_content(asked + httplib::detail::decode_url(asked, true) + digest.c_str(), "text/plain");
  };
  server.Get(".*", echo).Post(".*", echo);
  const std::string address = "127.0.0.1:" + std::to_string(server.bind_to_any_port("127.0.0.1"));
  std::thread serving([&] { server.listen_after_bind(); });
  while (!server.is_running()) std::this_thread::yield();
  all.board.write(ENDPOINTS_PATH,
                  with_matches_as(all.board.read(ENDPOINTS_PATH), "127.0.0.1:[0-9]+[^\n]*", address));

  const auto output_without_secret = [&](const std::string& name) {
    const std::string output = try_network(name).output;
    EXPECT_EQ(output.find("Zq"), std::string::npos) << output;
    EXPECT_EQ(output.find(digest.c_str()), std::string::npos) << output;
    return output;
  };
  for (const run_step& step : run_list()) {
    if (step.upload->by != carrier::http) continue;
    const std::string id = step.upload->id;
    const std::string output = output_without_secret(id);
    // WindIt and Regiowetter have no secret; the password of MeteoNews is in a header, which is not echoed.
    const bool has_none = id == "windit" || id == "regiowetter" || id == "meteonews";
    EXPECT_TRUE(has_none || output.find("***") != std::string::npos) << output;
    EXPECT_TRUE(id != "wunderground" || output.find(" ...\n  Reply:\n") != std::string::npos) << output;
  }
  interpose("FAIL", "popen:2");
  for (const char* const name : {"windfinder", "weather underground"}) output_without_secret(name);
  server.stop();
  serving.join();
}

}  // namespace
}  // namespace skypost::testing
