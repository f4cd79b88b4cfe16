#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <sstream>
#include <string>

#include "base/endpoints.h"
#include "base/paths.h"
#include "common/tool.h"
#include "settings/record.h"
#include "support/appliance_folder.h"
#include "support/station.h"

namespace skypost::testing {

using texts = std::vector<std::string>;

// One of the owner's tools on an appliance whose settings file holds what fill_settings makes.
class tool_test : public ::testing::Test {
 protected:
  explicit tool_test(const tool& tested) : tested_(tested) {
    setenv("NIMBULOGHW", "X86", 1);
    fill_settings(record);
    write(record);
  }
  ~tool_test() override {
    unsetenv("NIMBULOGHW");
    reset_endpoints();
    station_settings = settings_record{};
  }

  int run(const texts& arguments) {
    std::ostringstream out_stream;
    std::ostringstream error_stream;
    const int status = run_tool(tested_, arguments, out_stream, error_stream);
    out = out_stream.str();
    errors = error_stream.str();
    return status;
  }

  void run_well(const texts& arguments) {
    EXPECT_EQ(run(arguments), 0);
    EXPECT_EQ(errors, "");
  }

  // And changes nothing.
  void expect_refused(const texts& arguments, const std::string& error, int status = 1) {
    const bool is_there = std::filesystem::exists(file);
    const std::string before = is_there ? read_whole_file(file) : "";
    EXPECT_EQ(run(arguments), status);
    EXPECT_EQ(errors, "Error: " + error + "\n");
    EXPECT_EQ(out, "");
    EXPECT_EQ(is_there ? read_whole_file(file) : "", before);
  }

  void write(const settings_record& settings, std::size_t size = SETTINGS_SIZE) const {
    std::string bytes(reinterpret_cast<const char*>(settings.bytes), SETTINGS_SIZE);
    bytes.resize(size, 'x');
    appliance.write(SETTINGS_PATH, bytes);
  }

  appliance_folder appliance;
  std::string file = appliance.path(SETTINGS_PATH);
  settings_record record;
  std::string out;     // of the last run
  std::string errors;  // of the same

 private:
  const tool& tested_;
};

}  // namespace skypost::testing
