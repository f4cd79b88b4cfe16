// The owner's tools beside the appliance's data server.

#include "end_to_end/program.h"

namespace skypost::testing {
namespace {

TEST_F(program, has_tools_that_say_when_the_data_server_does_not_answer) {
  all.board.settings.set_text(sensor_uv, "uv7");
  all.board.save_settings();
  sim::run_result run = all.board.run_tool(SETTINGS_PROGRAM, {"check"});
  EXPECT_EQ(run.output.find("data server"), std::string::npos) << run.output;
  EXPECT_NE(run.output.find("sensor_uv: "), std::string::npos) << run.output;

  const auto expect_fault = [&](const std::string& reason) {
    const std::string fault = "the data server at 127.0.0.1:5558 " + reason;
    run = all.board.run_tool(SETTINGS_PROGRAM, {"check"});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.errors, "");
    EXPECT_TRUE(run.output.starts_with(fault + ", so nothing at all is sent. ")) << run.output;
    EXPECT_EQ(run.output.find("sensor_uv: "), std::string::npos) << run.output;

    const struct {
      const char* program;
      std::vector<std::string> arguments;
      std::string errors;
    } cases[] = {
        {SETTINGS_PROGRAM, {"check", "--quiet"}, ""},
        {SETTINGS_PROGRAM, {"sensors"}, "Error: " + fault + '\n'},
        {PREVIEW_PROGRAM, {}, "Error: " + fault + "; use --report FILE to read one\n"},
    };
    for (const auto& row : cases) {
      run = all.board.run_tool(row.program, row.arguments);
      EXPECT_EQ(run.status, 1);
      EXPECT_EQ(run.errors, row.errors);
      EXPECT_EQ(run.output, "");
    }
  };
  all.data->set_behaviour(sim::data_server::behaviour::nothing);
  expect_fault("closed the connection without a report");
  all.data->set_behaviour(sim::data_server::behaviour::report);
  all.data->set_report(std::string("\0actual_th0_temp_c 5", 20));
  expect_fault("sent an empty report");
  all.data.reset();
  expect_fault("does not answer (connect: Connection refused)");
}

}  // namespace
}  // namespace skypost::testing
