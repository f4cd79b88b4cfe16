// The list of steps as seen from outside: what each switch sets going, and in which order, under which limits
// and names a run takes the steps.

#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <map>
#include <regex>
#include <sstream>

#include "base/paths.h"
#include "end_to_end/program.h"
#include "run/run_list.h"

namespace skypost::testing {
namespace {

namespace fs = std::filesystem;
using arrivals = std::vector<std::string>;

class run_list_steps : public program {
 protected:
  run_list_steps() {
    setenv("LD_PRELOAD", TRACED_CALLS ":" INTERPOSED_CALLS, 1);
    setenv("SKYPOST_TEST_HASTE", "100", 1);
  }
  ~run_list_steps() override { unsetenv("LD_PRELOAD"); }

  // What reached somebody since the last call.
  arrivals new_arrivals() {
    arrivals all_seen;
    for (const sim::request_seen& seen : all.peers.requests())
      all_seen.push_back(seen.network->name +
                         std::string(seen.network->which == sim::server::second ? " second" : ""));
    for (const auto& entry :
         fs::directory_iterator(all.board.path(PULL_DIRECTORIES[1] + std::string("x")).parent_path())) {
      all_seen.push_back(entry.path().filename());
      fs::remove(entry);
    }
    const std::size_t sessions[] = {all.cwop->sessions().size(), all.aprs->sessions().size()};
    if (sessions[0] > cwop_sessions_) all_seen.push_back("CWOP");
    if (sessions[1] > aprs_sessions_) all_seen.push_back("APRS");
    if (all.mail.mails().size() > mails_) all_seen.push_back("mail");
    all.peers.forget_requests();
    cwop_sessions_ = sessions[0];
    aprs_sessions_ = sessions[1];
    mails_ = all.mail.mails().size();
    std::sort(all_seen.begin(), all_seen.end());
    return all_seen;
  }

  // One line for each limit that the run sets, with what it does under it.
  std::string trace_of_a_run() {
    const fs::path file = all.board.root() / "trace";
    fs::remove(file);
    setenv("SKYPOST_TEST_TRACE", file.c_str(), 1);
    run_well();
    unsetenv("SKYPOST_TEST_TRACE");
    std::istringstream calls(all.board.read("/trace"));
    std::string trace;
    for (std::string call; std::getline(calls, call);) trace += in_short(call);
    return trace;
  }

 private:
  // A network by the path of its URL, a file by its path, a packet by its sender, a failure by its name.
  std::string in_short(const std::string& call) const {
    std::smatch part;
    if (call == "popen /sbin/ifconfig eth0 2>/dev/null" || call == "alarm 0") return {};  // start-up
    if (call.starts_with("alarm ")) return '\n' + call + ':';
    if (std::regex_search(call, part, std::regex("^system .* skypost \"([^\"]*)\"")))
      return " !" + part[1].str();
    if (std::regex_search(call, part, std::regex("https?://127.0.0.1:\\d+([^?\"]*)")))
      return " wget" + part[1].str();
    if (call.starts_with("write ")) return ' ' + call.substr(6 + all.board.root().string().size());
    if (std::regex_search(call, part, std::regex("^send User ([^ ]*)"))) return " packet " + part[1].str();
    if (call.find("/opt/sbin/sendmail") != std::string::npos) return " mail";
    return " ?" + call;
  }

  std::size_t cwop_sessions_ = 0, aprs_sessions_ = 0, mails_ = 0;
};

// A switch on its own reaches its own network, file or mail and nothing else. The HTTP networks are those of
// the simulation, which names their switches itself.
TEST_F(run_list_steps, are_set_going_by_their_own_switch_alone) {
  std::map<const integer_field*, arrivals> expected = {
      {&awekas_enabled, {"awekas.txt"}},
      {&wedaal_enabled, {"wedaal.txt"}},
      {&hetweeractueel_enabled, {"hetweeractueel.txt"}},
      {&wetterpage24_enabled, {"wetterpage24.txt"}},
      {&meteoclimatic_enabled, {"meteoclimatic.txt"}},
      {&wetterspiegel_enabled, {"wetterspiegel.txt"}},
      {&cwop_enabled, {"CWOP"}},
      {&aprs_enabled, {"APRS"}},
      {&borgervejr_enabled, {"mail"}},
  };
  for (const sim::network_row& network : sim::http_networks())
    if (network.which != sim::server::second) expected[network.enabled].push_back(network.name);
  for (const run_step& step : run_list())
    EXPECT_TRUE(expected.contains(step.enabled)) << "nothing is expected of " << step.name.text;

  for (auto& [enabled, arrives] : expected) {
    SCOPED_TRACE(arrives.front());
    enable_only({enabled});
    all.board.write(LAST_RUN_PATH, "1");
    run_well();
    std::sort(arrives.begin(), arrives.end());
    EXPECT_EQ(new_arrivals(), arrives);
    EXPECT_TRUE(all.board.alarms().empty());
  }
}

// Every step fails that can: the networks refuse, the second pull directory is missing, nobody listens for
// packets.
TEST_F(run_list_steps, are_taken_in_their_order_under_their_limits_and_names) {
  all.peers.set_answer(sim::answer::bad);
  all.cwop.reset();
  all.aprs.reset();
  fs::remove_all(all.board.root() / "var/run/nimbulog/uploads");

  const std::string before_gate = R"(
alarm 15: /srv/www/awekas.txt /var/run/nimbulog/uploads/awekas.txt !awekas-pull wget/extern/eingabe_pruefung.php !awekas-push
alarm 15: /srv/www/wedaal.txt /var/run/nimbulog/uploads/wedaal.txt !wedaal-pull wget/get_wetter.php !wedaal-push
alarm 15: wget !meteonews
alarm 15: wget/wpas2/post.php !sauerlandwetter
alarm 15: wget/sh-netz/daten.php !SH-Netz
alarm 15: wget/wind-cgi/nimbulogload.pl !windfinder
alarm 15: wget/nimbulog/nimbulogload !windit
alarm 15: /srv/www/hetweeractueel.txt /var/run/nimbulog/uploads/hetweeractueel.txt !hetweeractueel
alarm 15: /srv/www/wetterpage24.txt /var/run/nimbulog/uploads/wetterpage24.txt !wetterpage24
alarm 15: /srv/www/meteoclimatic.txt /var/run/nimbulog/uploads/meteoclimatic.txt !meteoclimatic
alarm 15: /srv/www/wetterspiegel.txt /var/run/nimbulog/uploads/wetterspiegel.txt !wetterspiegel
alarm 15: wget/pwsupdate/pwsupdate.php !HAMweather/weather4u)";
  const std::string gate = R"(
alarm 15: wget/interface/http/input.php !wetterarchiv /var/run/nimbulog/aerolan.last)";
  const std::string after_gate = R"(
alarm 15: wget/feeds/load/WXDATAPOST.ASP !anythingweather
alarm 15: wget/weatherboxx/ !wetterring
alarm 15: wget/admin/jobs/nimbulog.asp !regiowetter
alarm 15: wget/data/nimbulog/get_nimbulog.php !regiowetter-bw
alarm 15: wget/weatherstation/updateweatherstation.php !weather underground
alarm 15: wget/wxengine/rest/collection/weatherstation !weatherflow
alarm 15: wget/automaticreading !metoffice
alarm 15: !CWOP
alarm 15: !APRS
alarm 15: wget/data/livedata.aspx !weatherbug
alarm 15: mail
alarm 15: wget/sendws.php !idokep)";
  all.board.write(LAST_RUN_PATH, "1");
  EXPECT_EQ(trace_of_a_run(), before_gate + gate + after_gate);
  // Now the gate is shut.
  EXPECT_EQ(trace_of_a_run(), before_gate + after_gate);
}

TEST_F(run_list_steps, set_no_limit_while_they_are_off_and_keep_the_gate_all_the_same) {
  enable_only({});
  all.board.write(LAST_RUN_PATH, std::to_string(std::time(nullptr) - 1'000));
  EXPECT_EQ(trace_of_a_run(), "\nalarm 15: /var/run/nimbulog/aerolan.last");
  EXPECT_EQ(trace_of_a_run(), "");
}

}  // namespace
}  // namespace skypost::testing
