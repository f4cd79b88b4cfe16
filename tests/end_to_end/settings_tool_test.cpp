// The owner's tool beside the appliance's data server.

#include "end_to_end/program.h"

namespace skypost::testing {
namespace {

TEST_F(program, has_a_settings_tool_that_lists_the_sensors) {
  const sim::run_result run = all.board.run_tool(SETTINGS_PROGRAM, {"sensors"});
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.errors, "");
  EXPECT_NE(run.output.find("sensor_uv: UV sensor, such as uv0\n  uv0     index "), std::string::npos)
      << run.output;
}

TEST_F(program, has_a_settings_tool_that_says_when_the_data_server_does_not_answer) {
  all.board.settings.set_text(sensor_uv, "uv7");
  all.board.save_settings();
  const auto expect_run = [&](const std::vector<std::string>& arguments, const std::string& start,
                              const std::string& errors, bool has_sensor) {
    const sim::run_result run = all.board.run_tool(SETTINGS_PROGRAM, arguments);
    EXPECT_EQ(run.status, 1);
    EXPECT_TRUE(run.output.starts_with(start)) << run.output;
    EXPECT_EQ(run.output.find("data server") != std::string::npos, !start.empty()) << run.output;
    EXPECT_EQ(run.output.find("sensor_uv: ") != std::string::npos, has_sensor) << run.output;
    EXPECT_EQ(run.errors, errors);
    return run;
  };
  expect_run({"check"}, "", "", true);

  const auto expect_no_report = [&](const std::string& reason) {
    const std::string fault = "the data server at 127.0.0.1:5558 " + reason;
    expect_run({"check"}, fault + ", so nothing at all is sent. ", "", false);
    expect_run({"sensors"}, "", "Error: " + fault + '\n', false);
    EXPECT_EQ(expect_run({"check", "--quiet"}, "", "", false).output, "");
  };
  all.data->set_behaviour(sim::data_server::behaviour::nothing);
  expect_no_report("closed the connection without a report");
  all.data.reset();
  expect_no_report("does not answer (connect: Connection refused)");
}

}  // namespace
}  // namespace skypost::testing
