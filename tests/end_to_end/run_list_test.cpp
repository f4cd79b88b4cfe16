// The list of steps as seen from outside: what each switch sets going, and in which order, under which limits
// and names a run takes the steps.

#include <ctime>
#include <filesystem>
#include <regex>
#include <sstream>

#include "base/paths.h"
#include "end_to_end/program.h"

namespace skypost::testing {
namespace {

namespace fs = std::filesystem;

// A limit that a run sets, and what it does under it: a network by the path of its URL, a file by its path, a
// failure by its name.
struct limited_step {
  const integer_field& enabled;
  std::string trace;
};

// In the order of a run.
const limited_step STEPS[] = {
    // clang-format off
    {awekas_enabled,          "alarm 15: /srv/www/awekas.txt /var/run/nimbulog/uploads/awekas.txt !awekas-pull wget/extern/eingabe_pruefung.php !awekas-push\n"},
    {wedaal_enabled,          "alarm 15: /srv/www/wedaal.txt /var/run/nimbulog/uploads/wedaal.txt !wedaal-pull wget/get_wetter.php !wedaal-push\n"},
    {meteonews_enabled,       "alarm 15: wget !meteonews\n"},
    {sauerlandwetter_enabled, "alarm 15: wget/wpas2/post.php !sauerlandwetter\n"},
    {shnetz_enabled,          "alarm 15: wget/sh-netz/daten.php !SH-Netz\n"},
    {windfinder_enabled,      "alarm 15: wget/wind-cgi/nimbulogload.pl !windfinder\n"},
    {windit_enabled,          "alarm 15: wget/nimbulog/nimbulogload !windit\n"},
    {hetweeractueel_enabled,  "alarm 15: /srv/www/hetweeractueel.txt /var/run/nimbulog/uploads/hetweeractueel.txt !hetweeractueel\n"},
    {wetterpage24_enabled,    "alarm 15: /srv/www/wetterpage24.txt /var/run/nimbulog/uploads/wetterpage24.txt !wetterpage24\n"},
    {meteoclimatic_enabled,   "alarm 15: /srv/www/meteoclimatic.txt /var/run/nimbulog/uploads/meteoclimatic.txt !meteoclimatic\n"},
    {wetterspiegel_enabled,   "alarm 15: /srv/www/wetterspiegel.txt /var/run/nimbulog/uploads/wetterspiegel.txt !wetterspiegel\n"},
    {hamweather_enabled,      "alarm 15: wget/pwsupdate/pwsupdate.php !HAMweather/weather4u\n"},
    {wetterarchiv_enabled,    "alarm 15: wget/interface/http/input.php !wetterarchiv /var/run/nimbulog/aerolan.last\n"},
    {anythingweather_enabled, "alarm 15: wget/feeds/load/WXDATAPOST.ASP !anythingweather\n"},
    {wetterring_enabled,      "alarm 15: wget/weatherboxx/ !wetterring\n"},
    {regiowetter_enabled,     "alarm 15: wget/admin/jobs/nimbulog.asp !regiowetter\n"},
    {regiowetter_bw_enabled,  "alarm 15: wget/data/nimbulog/get_nimbulog.php !regiowetter-bw\n"},
    {wunderground_enabled,    "alarm 15: wget/weatherstation/updateweatherstation.php !weather underground\n"},
    {weatherflow_enabled,     "alarm 15: wget/wxengine/rest/collection/weatherstation !weatherflow\n"},
    {metoffice_enabled,       "alarm 15: wget/automaticreading !metoffice\n"},
    {cwop_enabled,            "alarm 15: !CWOP\n"},
    {aprs_enabled,            "alarm 15: !APRS\n"},
    {weatherbug_enabled,      "alarm 15: wget/data/livedata.aspx !weatherbug\n"},
    {borgervejr_enabled,      "alarm 15: mail\n"},
    {idokep_enabled,          "alarm 15: wget/sendws.php !idokep\n"},
    // clang-format on
};

// Every step fails that can: the networks refuse, the second pull directory is missing, nobody listens for
// packets.
class run_list_steps : public program {
 protected:
  run_list_steps() {
    all.peers.set_reply(sim::reply_kind::bad);
    all.cwop.reset();
    all.aprs.reset();
    fs::remove_all(all.board.root() / "var/run/nimbulog/uploads");
    interpose("HASTE", "100");
    interpose("TRACE", all.board.root() / "trace");
  }

  // Of a run whose last turn of Wetterarchiv was so many seconds ago.
  std::string trace_of_a_run(std::time_t age) {
    all.board.write(LAST_RUN_PATH, std::to_string(std::time(nullptr) - age));
    return trace_of_next_run();
  }

  std::string trace_of_next_run() {
    all.board.write("/trace", "");
    run_well();
    std::istringstream calls(all.board.read("/trace"));
    std::string trace;
    for (std::string call; std::getline(calls, call);) trace += in_short(call);
    return trace.empty() ? trace : trace.substr(1) + '\n';
  }

 private:
  std::string in_short(const std::string& call) const {
    std::smatch part;
    if (call == "popen /sbin/ifconfig eth0 2>/dev/null" || call == "alarm 0") return {};  // start-up
    if (call.starts_with("alarm ")) return '\n' + call + ':';
    if (std::regex_search(call, part, std::regex("^system .* skypost \"([^\"]*)\"")))
      return " !" + part[1].str();
    if (std::regex_search(call, part, std::regex("https?://127.0.0.1:\\d+([^?\"]*)")))
      return " wget" + part[1].str();
    if (call.starts_with("write ")) return ' ' + call.substr(6 + all.board.root().string().size());
    if (call.find("/opt/sbin/sendmail") != std::string::npos) return " mail";
    return " ?" + call;
  }
};

TEST_F(run_list_steps, are_taken_in_their_order_under_their_limits_and_names) {
  std::string with_open_gate, with_shut_gate;
  for (const limited_step& step : STEPS) {
    with_open_gate += step.trace;
    if (&step.enabled != &wetterarchiv_enabled) with_shut_gate += step.trace;
  }
  EXPECT_EQ(trace_of_a_run(1'000), with_open_gate);
  EXPECT_EQ(trace_of_next_run(), with_shut_gate);
  EXPECT_NEAR(std::stod(all.board.read(LAST_RUN_PATH)), static_cast<double>(std::time(nullptr)), 30);
}

// A switch on its own reaches its own network, file or mail and nothing else. The simulation says itself which
// switch is a network's.
TEST_F(run_list_steps, are_set_going_by_their_own_switch_alone) {
  for (const limited_step& step : STEPS) {
    SCOPED_TRACE(step.trace);
    enable_only({&step.enabled});
    all.peers.forget_requests();
    EXPECT_EQ(trace_of_a_run(&step.enabled == &wetterarchiv_enabled ? 1'000 : 500), step.trace);
    EXPECT_EQ(requests(), step.trace.find("wget") == std::string::npos ? 0 : 1);
    for (const sim::request_seen& seen : all.peers.requests()) {
      EXPECT_EQ(seen.network->enabled, &step.enabled) << seen.network->name;
      EXPECT_NE(seen.network->which, sim::server::second) << seen.network->name;
    }
  }
  EXPECT_EQ(all.mail.mails().size(), 1U);
}

TEST_F(run_list_steps, set_no_limit_while_they_are_off_and_keep_the_gate_all_the_same) {
  enable_only({});
  EXPECT_EQ(trace_of_a_run(1'000), "alarm 15: /var/run/nimbulog/aerolan.last\n");
  EXPECT_EQ(trace_of_next_run(), "");
}

TEST_F(run_list_steps, push_to_awekas_and_wedaal_only_with_a_user_of_two_characters) {
  enable_only({&awekas_enabled, &wedaal_enabled});
  all.board.settings.set_text(awekas_user, "a");
  all.board.save_settings();
  EXPECT_EQ(
      trace_of_a_run(500),
      "alarm 15: /srv/www/awekas.txt /var/run/nimbulog/uploads/awekas.txt !awekas-pull\n" + STEPS[1].trace);
}

}  // namespace
}  // namespace skypost::testing
