#pragma once

#include <sys/types.h>

#include <filesystem>
#include <string>
#include <vector>

#include "settings/record.h"
#include "sim/folder.h"

namespace skypost::sim {

struct run_result {
  int status = 0;      // the exit status
  int signal = 0;      // the signal that ended it; 0: none
  std::string output;  // from standard output
  std::string errors;  // from standard error
  double seconds = 0;
};

// The arguments of one call of the alarm script.
using alarm_call = std::vector<std::string>;

// argv-style pointers into `texts`, ended by nullptr.
std::vector<char*> pointers_to(std::vector<std::string>& texts);

// A program running in the background; killed on destruction.
class running_program {
 public:
  // Starts the uploader, or another program, on the appliance in the folder `root`.
  running_program(const std::filesystem::path& root, const std::vector<std::string>& arguments);
  running_program(const std::filesystem::path& root, const std::string& program,
                  const std::vector<std::string>& arguments);
  ~running_program();
  running_program(const running_program&) = delete;
  running_program& operator=(const running_program&) = delete;

  pid_t process() const { return process_; }
  void send_signal(int number) const;
  bool has_ended() const;
  run_result wait();

 private:
  std::filesystem::path output_;
  std::filesystem::path errors_;
  pid_t process_ = 0;
  bool is_over_ = false;
  double start_ = 0;
};

// An appliance with everything that a run needs.
class appliance : public folder {
 public:
  appliance();

  // Change these, then save them to the settings file. Initially: defaults, sensors, position, and every network
  // switched on with its account.
  settings_record settings;
  void save_settings() const;
  void switch_all_networks_off();

  // Installs the mail program, configured for a mail server on this machine.
  void install_mail_program(std::uint16_t mail_port) const;

  std::vector<alarm_call> alarms() const;
  void forget_alarms() const;

  // Runs the uploader to its end.
  run_result run(const std::vector<std::string>& arguments = {}) const;
  run_result run_tool(const std::string& program, const std::vector<std::string>& arguments) const;
};

// If this file exists, WGETRC points to it, as if the caller had wget settings.
inline constexpr char CALLERS_WGETRC_PATH[] = "/simulated/wgetrc";

// The output of `ifconfig eth0` on the simulated board.
inline constexpr char IFCONFIG_OUTPUT_PATH[] = "/simulated/ifconfig";

// The simulated station's call signs, and its passcode for APRS.
inline constexpr char CWOP_ID[] = "CW4242";
inline constexpr char APRS_CALL_SIGN[] = "N0CALL-13";
inline constexpr int APRS_PASSCODE = 12345;

}  // namespace skypost::sim
