#pragma once

#include <sys/types.h>

#include <filesystem>
#include <string>
#include <vector>

#include "settings/record.h"
#include "sim/folder.h"

namespace skypost::sim {

// How a run of the program ended.
struct run_result {
  int status = 0;      // the exit status
  int signal = 0;      // that ended it; 0: none
  std::string output;  // what it wrote to standard output
  std::string errors;  // and to standard error
  double seconds = 0;
};

// The arguments of one call of the alarm script.
using alarm_call = std::vector<std::string>;

// The words of a command, or of an environment, as the system takes them; they live as long as `texts`.
std::vector<char*> pointers_to(std::vector<std::string>& texts);

// A program while it runs, on its own; it is ended when this goes.
class running_program {
 public:
  // The uploader, on the appliance in the folder `root`, or another program of the appliance's.
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

// Selects a sensor of the simulated appliance's for each value.
void select_sensors(settings_record& settings);

// An appliance with all that a run needs of it.
class appliance : public folder {
 public:
  appliance();

  // What the settings file holds, once saved. At first: defaults, the sensors, the position, and for
  // every network its account, switched on.
  settings_record settings;
  void save_settings() const;
  void switch_all_networks_off();

  // Puts the mail program there, with a configuration that leads to a mail server on this machine.
  void install_mail_program(std::uint16_t mail_port) const;

  // Calls of the alarm script so far, each with all of its arguments.
  std::vector<alarm_call> alarms() const;
  void forget_alarms() const;

  // Runs the real program to its end, or starts it.
  run_result run(const std::vector<std::string>& arguments = {}) const;
  // Runs one of the owner's tools in the same place.
  run_result run_tool(const std::string& program, const std::vector<std::string>& arguments) const;
};

// Settings for wget that whoever starts the program names in WGETRC. At first there are none.
inline constexpr char CALLERS_WGETRC_PATH[] = "/simulated/wgetrc";

// What the simulated board's `ifconfig eth0` prints.
inline constexpr char IFCONFIG_OUTPUT_PATH[] = "/simulated/ifconfig";

// The call sign and the passcodes of the simulated station.
inline constexpr char CWOP_ID[] = "CW4242";
inline constexpr char APRS_CALL_SIGN[] = "N0CALL-13";
inline constexpr int APRS_PASSCODE = 12345;

}  // namespace skypost::sim
