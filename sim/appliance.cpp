#include "sim/appliance.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <sstream>
#include <stdexcept>
#include <system_error>

#include "base/paths.h"
#include "run/run_list.h"
#include "settings/defaults.h"
#include "sim/networks.h"
#include "sim/sensors.h"

namespace skypost::sim {

namespace fs = std::filesystem;

namespace {

// Appends the number of its arguments and each argument to a file, each followed by a NUL.
constexpr char ALARM_SCRIPT[] =
    "#!/bin/sh\n"
    "printf '%s\\0' \"$#\" \"$@\" >> \"${0%/*}/alarms\"\n";
constexpr char ALARMS_PATH[] = "/home/nimbulog/alarms";

double seconds_now() {
  using namespace std::chrono;
  return duration<double>(steady_clock::now().time_since_epoch()).count();
}

// The libraries that the caller preloads, such as a test's, come before the board's.
std::string preloaded() {
  const char* const of_caller = std::getenv("LD_PRELOAD");
  return of_caller == nullptr ? BOARD_LIBRARY : std::string(of_caller) + ":" BOARD_LIBRARY;
}

// The caller's environment without variables that would direct the program or wget elsewhere.
std::vector<std::string> environment_for(const fs::path& root) {
  std::vector<std::string> variables = {
      "SKYPOST_ROOT=" + root.string(),
      "HOME=" + root.string(),
      "LD_PRELOAD=" + preloaded(),
      // Otherwise the address sanitizer would insist on being loaded before the board's library.
      "ASAN_OPTIONS=verify_asan_link_order=0",
      "NIMBULOGHW=",
  };
  const std::string callers_wgetrc = root.string() + CALLERS_WGETRC_PATH;
  if (fs::exists(callers_wgetrc)) variables.push_back("WGETRC=" + callers_wgetrc);
  for (char** variable = environ; *variable != nullptr; ++variable) {
    const std::string_view name(*variable, std::strcspn(*variable, "=") + 1);
    const auto is_same = [&](const std::string& mine) { return mine.starts_with(name); };
    if (!name.ends_with("_proxy=") && name != "WGETRC=" &&
        std::none_of(variables.begin(), variables.end(), is_same))
      variables.emplace_back(*variable);
  }
  return variables;
}

void fill_settings(settings_record& settings) {
  std::memset(&settings, 0, sizeof settings);
  set_default_settings(settings);
  select_sensors(settings);

  settings.set_integer(longitude_degrees, 8);
  settings.set_integer(longitude_minutes, 18);
  settings.set_integer(longitude_seconds, 0);
  settings.set_integer(latitude_degrees, 47);
  settings.set_integer(latitude_minutes, 3);
  settings.set_integer(latitude_seconds, 30);

  for (const run_step& step : run_list()) settings.set_integer(*step.enabled, 1);
  for (const network_row& network : http_networks())
    for (const account_text& text : network.account)
      if (text.field != nullptr) settings.set_text(*text.field, text.value);
  settings.set_text(meteoclimatic_station, "ESCAT0800000008001A");
  settings.set_text(wetterspiegel_id, "spiegel-9");
  settings.set_text(cwop_id, CWOP_ID);
  settings.set_text(aprs_call_sign, APRS_CALL_SIGN);
  settings.set_text(aprs_host, "127.0.0.1");
  settings.set_integer(aprs_passcode, APRS_PASSCODE);
  settings.set_integer(aprs_pressure_kind, 1);
  settings.set_text(sender_address, "station@example.org");
}

}  // namespace

std::vector<char*> pointers_to(std::vector<std::string>& texts) {
  std::vector<char*> pointers;
  pointers.reserve(texts.size() + 1);
  for (std::string& text : texts) pointers.push_back(text.data());
  pointers.push_back(nullptr);
  return pointers;
}

running_program::running_program(const fs::path& root, const std::vector<std::string>& arguments)
    : running_program(root, SKYPOST_PROGRAM, arguments) {}

running_program::running_program(const fs::path& root, const std::string& program,
                                 const std::vector<std::string>& arguments)
    : output_(root / "standard_output"), errors_(root / "standard_error"), start_(seconds_now()) {
  std::vector<std::string> words = {program};
  words.insert(words.end(), arguments.begin(), arguments.end());
  std::vector<std::string> variables = environment_for(root);

  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
  constexpr int NEW_FILE = O_WRONLY | O_CREAT | O_TRUNC;
  posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, output_.c_str(), NEW_FILE, 0644);
  posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, errors_.c_str(), NEW_FILE, 0644);
  const int fault = posix_spawn(&process_, program.c_str(), &actions, nullptr, pointers_to(words).data(),
                                pointers_to(variables).data());
  posix_spawn_file_actions_destroy(&actions);
  if (fault != 0) throw std::system_error(fault, std::generic_category(), program);
}

running_program::~running_program() {
  if (is_over_) return;
  send_signal(SIGKILL);
  wait();
}

void running_program::send_signal(int number) const { kill(process_, number); }

bool running_program::has_ended() const {
  siginfo_t info{};
  return waitid(P_PID, static_cast<id_t>(process_), &info, WEXITED | WNOHANG | WNOWAIT) == 0 &&
         info.si_pid != 0;
}

run_result running_program::wait() {
  run_result result;
  int status = 0;
  waitpid(process_, &status, 0);
  is_over_ = true;
  result.seconds = seconds_now() - start_;
  if (WIFEXITED(status)) result.status = WEXITSTATUS(status);
  if (WIFSIGNALED(status)) result.signal = WTERMSIG(status);
  result.output = read_file(output_);
  result.errors = read_file(errors_);
  return result;
}

appliance::appliance() {
  for (const char* const directory : PULL_DIRECTORIES) path(std::string(directory) + "file");
  write(PROCESSOR_PATH, "model name\t: simulated board\n");
  write(ALARM_SCRIPT_PATH, ALARM_SCRIPT);
  fs::permissions(path(ALARM_SCRIPT_PATH), fs::perms::owner_all);
  write(WGET_SETTINGS_PATH, read_file(INSTALLED_WGETRC));
  write(IFCONFIG_OUTPUT_PATH, "eth0      Link encap:Ethernet  HWaddr 00:1a:2b:3c:4d:5e  \n");
  fill_settings(settings);
  save_settings();
}

// Atomic, because the program may be reading the file.
void appliance::save_settings() const {
  const std::string temporary = std::string(SETTINGS_PATH) + ".new";
  write(temporary, {reinterpret_cast<const char*>(settings.bytes), sizeof settings.bytes});
  fs::rename(path(temporary), path(SETTINGS_PATH));
}

void appliance::switch_all_networks_off() {
  for (const settings_field& field : SETTINGS_FIELDS)
    if (field.kind == field_kind::flag) std::memset(settings.bytes + field.offset, 0, field.size);
}

void appliance::install_mail_program(std::uint16_t mail_port) const {
  std::error_code ignored;
  fs::create_symlink("/usr/bin/esmtp", path(MAIL_PROGRAM_PATH), ignored);
  write(MAIL_CONFIGURATION_PATH,
        "hostname = 127.0.0.1:" + std::to_string(mail_port) + "\nstarttls = disabled\n");
}

std::vector<alarm_call> appliance::alarms() const {
  std::istringstream words(read(ALARMS_PATH));
  std::vector<alarm_call> calls;
  for (std::string word; std::getline(words, word, '\0');) {
    alarm_call call(std::stoul(word));
    for (std::string& argument : call) std::getline(words, argument, '\0');
    calls.push_back(call);
  }
  return calls;
}

void appliance::forget_alarms() const { fs::remove(path(ALARMS_PATH)); }

run_result appliance::run(const std::vector<std::string>& arguments) const {
  return running_program(root(), arguments).wait();
}

run_result appliance::run_tool(const std::string& program, const std::vector<std::string>& arguments) const {
  return running_program(root(), program, arguments).wait();
}

}  // namespace skypost::sim
