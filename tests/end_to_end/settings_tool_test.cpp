// The owner's tool beside the appliance's data server.

#include "settings_tool/settings_tool.h"

#include <cstdlib>
#include <sstream>

#include "end_to_end/program.h"

namespace skypost::testing {
namespace {

class settings_tool_at_the_data_server : public program {
 protected:
  settings_tool_at_the_data_server() { setenv("SKYPOST_ROOT", all.board.root().c_str(), 1); }
  ~settings_tool_at_the_data_server() override { unsetenv("SKYPOST_ROOT"); }

  int run(const std::vector<std::string>& arguments) {
    std::ostringstream out_stream;
    std::ostringstream error_stream;
    ::testing::internal::CaptureStderr();
    const int status = run_tool(SETTINGS_TOOL, arguments, out_stream, error_stream);
    EXPECT_EQ(::testing::internal::GetCapturedStderr(), "");
    out = out_stream.str();
    errors = error_stream.str();
    return status;
  }

  std::string out;
  std::string errors;
};

TEST_F(settings_tool_at_the_data_server, lists_its_sensors) {
  EXPECT_EQ(run({"sensors"}), 0);
  EXPECT_NE(out.find("sensor_uv: UV sensor, such as uv0\n  uv0     index "), std::string::npos) << out;
}

TEST_F(settings_tool_at_the_data_server, says_when_it_does_not_answer) {
  all.board.settings.set_text(sensor_uv, "uv7");
  all.board.save_settings();
  EXPECT_EQ(run({"check"}), 1);
  EXPECT_EQ(out.find("data server"), std::string::npos) << out;
  EXPECT_NE(out.find("sensor_uv: "), std::string::npos) << out;

  const auto expect_no_report = [&](const std::string& reason) {
    EXPECT_EQ(run({"check"}), 1);
    EXPECT_TRUE(
        out.starts_with("the data server at 127.0.0.1:5558 " + reason + ", so nothing at all is sent. "))
        << out;
    EXPECT_EQ(out.find("sensor_uv: "), std::string::npos) << out;
    EXPECT_EQ(run({"sensors"}), 1);
    EXPECT_EQ(errors, "Error: the data server at 127.0.0.1:5558 " + reason + "\n");
    EXPECT_EQ(run({"check", "--quiet"}), 1);
    EXPECT_EQ(out + errors, "");
  };
  all.data->set_behaviour(sim::data_server::behaviour::nothing);
  expect_no_report("closed the connection without a report");
  all.data.reset();
  expect_no_report("does not answer (connect: Connection refused)");
}

}  // namespace
}  // namespace skypost::testing
