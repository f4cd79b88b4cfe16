#include <csignal>
#include <filesystem>
#include <set>

#include "base/paths.h"
#include "end_to_end/program.h"

namespace skypost::testing {
namespace {

namespace fs = std::filesystem;

constexpr int SOME_PASSES = 12;  // in seconds

class rapid_fire : public program {
 protected:
  bool more_of(const std::string& name) {
    const int before = requests(name);
    return comes_true([&] { return requests(name) > before + 1; }, SOME_PASSES);
  }
};

long open_descriptors(const sim::running_program& running) {
  return std::distance(fs::directory_iterator("/proc/" + std::to_string(running.process()) + "/fd"), {});
}

TEST_F(rapid_fire, follows_the_settings_file_and_outlives_its_absence) {
  interpose("HASTE", "4");
  interpose("CLOCK", "4");
  enable_only_rapid_fire(1, 0);
  sim::running_program running(all.board.root(), {"-r"});
  ASSERT_TRUE(more_of("weather underground"));
  EXPECT_EQ(requests("weatherflow"), 0);

  // A change takes effect without a restart.
  enable_only_rapid_fire(1, 1);
  ASSERT_TRUE(more_of("weatherflow"));
  const long descriptors = open_descriptors(running);

  // Without the file the last settings stay in force.
  fs::remove(all.board.path(SETTINGS_PATH));
  ASSERT_TRUE(comes_true([&] { return !all.board.alarms().empty(); }, SOME_PASSES));
  const sim::alarm_call expected = {"skypost", "Can't read nimbulog settings file (rapid fire)", ""};
  EXPECT_EQ(all.board.alarms()[0], expected);
  ASSERT_TRUE(more_of("weatherflow"));

  enable_only_rapid_fire(0, 1);
  ASSERT_TRUE(more_of("weatherflow"));
  const int of_the_other = requests("weather underground");
  ASSERT_TRUE(more_of("weatherflow"));
  EXPECT_EQ(requests("weather underground"), of_the_other);

  // Between uploads, the loop has no more descriptors open than before.
  EXPECT_TRUE(comes_true([&] { return open_descriptors(running) <= descriptors; }, SOME_PASSES));
  running.send_signal(SIGTERM);
  const sim::run_result run = running.wait();
  EXPECT_EQ(run.signal, SIGTERM);
  EXPECT_EQ(run.errors, "");
}

TEST_F(rapid_fire, skips_passes_without_data_and_reports_each_failed_upload) {
  enable_only_rapid_fire(5, 0);
  interpose("HASTE", "10");
  interpose("CLOCK", "10");
  all.data->set_behaviour(sim::data_server::behaviour::silence);
  const sim::running_program running(all.board.root(), {"-r"});

  // The loop gives up on the first report after five seconds, then requests the second.
  ASSERT_TRUE(comes_true([&] { return all.data->clients() == 2; }, SOME_PASSES));
  EXPECT_EQ(requests(), 0);
  EXPECT_TRUE(all.board.alarms().empty());

  all.data->set_behaviour(sim::data_server::behaviour::report);
  all.peers.set_reply(sim::reply_kind::bad);
  ASSERT_TRUE(comes_true([&] { return all.board.alarms().size() == 2; }, SOME_PASSES));
  const std::vector<sim::alarm_call> expected(
      2, {"skypost", "weather underground rapid fire", "no response from weather underground"});
  EXPECT_EQ(all.board.alarms(), expected);

  // The alarm must not have the error text of an earlier pass.
  all.peers.set_reply(sim::reply_kind::good);
  ASSERT_TRUE(more_of("weather underground"));
  fs::remove(all.board.path(SETTINGS_PATH));
  const std::size_t alarms = all.board.alarms().size();
  ASSERT_TRUE(comes_true([&] { return all.board.alarms().size() > alarms; }, SOME_PASSES));
  EXPECT_EQ(all.board.alarms().back()[2], "");
}

// The clock runs ten times as fast, so WindIt's fixed interval takes a second.
TEST_F(rapid_fire, sends_each_network_its_variant_of_what_the_pass_has_fetched) {
  enable_only_rapid_fire(5, 5);
  all.board.settings.set_integer(windit_enabled, 1);
  all.board.save_settings();
  all.data->set_behaviour(sim::data_server::behaviour::numbered);
  all.peers.set_reply(sim::reply_kind::bad);
  interpose("HASTE", "10");
  interpose("CLOCK", "10");
  const sim::running_program running(all.board.root(), {"-r"});
  ASSERT_TRUE(comes_true([&] { return requests("windit") == 2; }, SOME_PASSES));

  std::set<std::string> endpoints, names;
  for (const sim::request_seen& seen : all.peers.requests()) {
    endpoints.insert(seen.network->endpoint);
    EXPECT_EQ(seen.request.find("&realtime=1&rtfreq=5") != std::string::npos,
              seen.network->endpoint != std::string("windit"))
        << seen.request;
  }
  for (const sim::alarm_call& call : all.board.alarms()) names.insert(call[1]);
  EXPECT_EQ(endpoints, (std::set<std::string>{"wunderground_rapid", "weatherflow", "windit"}));
  EXPECT_EQ(names, (std::set<std::string>{"weather underground rapid fire", "weather flow rapid fire",
                                          "windit rapid fire"}));
  // Nothing is due in the first pass, so the first request has the second report's 2 °C.
  const std::string first = all.peers.requests()[0].request;
  EXPECT_NE(first.find("&tempf=35.6&"), std::string::npos) << first;
}

// Taken as unsigned, a negative interval would be a sleep of more than a century.
TEST_F(rapid_fire, takes_thirty_seconds_for_an_impossible_interval) {
  enable_only_rapid_fire(-5, 0);
  interpose("HASTE", "100");
  interpose("CLOCK", "100");
  const sim::running_program running(all.board.root(), {"-r"});
  ASSERT_TRUE(comes_true([&] { return requests("weather underground") > 0; }, SOME_PASSES));
  EXPECT_NE(all.peers.requests()[0].request.find("&rtfreq=30&"), std::string::npos);
}

}  // namespace
}  // namespace skypost::testing
