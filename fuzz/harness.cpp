#include "harness.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "base/paths.h"
#include "channels/channels.h"
#include "run/run_list.h"
#include "settings/defaults.h"
#include "sim/sensors.h"

// Keeps every target from starting processes and from sleeping.
extern "C" int system(const char*) { return 0; }
extern "C" int nanosleep(const timespec*, timespec*) { return 0; }
extern "C" std::FILE* popen(const char*, const char*) {
  errno = EMFILE;
  return nullptr;
}

namespace skypost::fuzz {
namespace {

std::string root;

struct environment {
  environment() {
    char name[] = "/dev/shm/skypost-fuzz-XXXXXX";
    root = mkdtemp(name);
    setenv("SKYPOST_ROOT", root.c_str(), 1);
    setenv("TZ", "UTC", 1);
    for (const char* const directory : PULL_DIRECTORIES)
      std::filesystem::create_directories(root + directory);
  }
  ~environment() { std::filesystem::remove_all(root); }
} const the_environment;

// True if the shell treats the character at `i` as a substitution or, outside quotes, as the end of a command. The "&"
// in the program's own "2>&1 " is neither.
bool ends_the_command(std::string_view command, std::size_t i, bool quoted) {
  if (command[i] == '`' || command[i] == '$') return true;
  return !quoted && std::string_view(";&\n").find(command[i]) != std::string_view::npos &&
         command.substr(i == 0 ? 0 : i - 1, 4) != ">&1 ";
}

// True if the shell sees a single command: every quote is closed, and nothing ends the command early.
bool is_sound(std::string_view command) {
  bool quoted = false;
  for (std::size_t i = 0; i < command.size(); ++i) {
    if (command[i] == '\\' && quoted)
      ++i;
    else if (command[i] == '"')
      quoted = !quoted;
    else if (ends_the_command(command, i, quoted))
      return false;
  }
  return !quoted;
}

bool has_line_break(std::string_view text) { return text.find_first_of("\r\n") != std::string_view::npos; }

// True for exactly two lines, and if a call sign has a line break: then nothing is sent.
bool is_login_and_packet(std::string_view text) {
  if (has_line_break(station_settings.text(cwop_id)) || has_line_break(station_settings.text(aprs_call_sign)))
    return true;
  for (int line = 0; line < 2; ++line) {
    const std::size_t end = text.find("\r\n");
    if (end == std::string_view::npos || has_line_break(text.substr(0, end))) return false;
    text.remove_prefix(end + 2);
  }
  return text.empty();
}

// True for a header of four lines, whatever the sender contains, an empty line, and a body of complete lines.
bool is_mail(std::string_view text) {
  for (const std::string_view start : {"date: ", "to: ", "from: ", "subject: "}) {
    const std::size_t end = text.find('\n');
    if (!text.starts_with(start) || end == std::string_view::npos || has_line_break(text.substr(0, end)))
      return false;
    text.remove_prefix(end + 1);
  }
  return text.starts_with('\n') && text.ends_with("\r\n");
}

}  // namespace

void require(bool condition, const char* promise) {
  if (condition) return;
  std::fprintf(stderr, "Violated: %s\n", promise);
  std::abort();
}

void write_file(const char* appliance_path, std::string_view content, std::size_t size) {
  const std::filesystem::path path = root + appliance_path;
  std::filesystem::create_directories(path.parent_path());
  const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
  require(write(file, content.data(), content.size()) == static_cast<ssize_t>(content.size()), "write");
  if (size > content.size()) require(ftruncate(file, static_cast<off_t>(size)) == 0, "ftruncate");
  close(file);
}

void equip_station() {
  set_default_settings(station_settings);
  sim::select_sensors(station_settings);
}

void compose_everything() {
  const station source = {
      station_settings, live_record, moment_at(1'336'280'889), {"X86", "00:1A:2B:3C:4D:5E"}};
  for_each_upload([&](const upload& upload) {
    upload_text text;
    upload.compose(text, source);
    if (upload.by == carrier::http) require(text.was_cut() || is_sound(text.view()), upload.id);
    if (upload.by == carrier::aprs) require(is_login_and_packet(text.view()), upload.id);
    if (upload.by == carrier::mail) require(is_mail(text.view()), upload.id);
  });
  fixed_text<20'000> mail_command;
  append_mail_command(mail_command);
  require(is_sound(mail_command.view()), "the mail command");
  for (const run_step& step : run_list())
    if (step.upload->by == carrier::file) require(step.upload->send() == 0, step.upload->id);
}

std::uint8_t take_byte(std::string_view& input) {
  if (input.empty()) return 0;
  const auto byte = static_cast<std::uint8_t>(input.front());
  input.remove_prefix(1);
  return byte;
}

}  // namespace skypost::fuzz
