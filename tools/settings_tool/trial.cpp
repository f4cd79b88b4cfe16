#include "settings_tool/trial.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>

#include "base/error_text.h"
#include "base/paths.h"
#include "channels/channels.h"
#include "common/child_process.h"
#include "common/composing.h"
#include "common/file_start.h"
#include "common/secrets.h"
#include "common/settings_file.h"
#include "common/shared_value.h"
#include "pullfiles/pullfiles.h"
#include "run/process.h"
#include "run/run_list.h"
#include "settings_tool/program_fault.h"
#include "transport/reply_listener.h"
#include "transport/wget.h"

namespace skypost {
namespace {

// Smaller than a reply's own buffer, so that a full one counts as truncated: it may end within a secret.
using heard_text = fixed_text<REPLY_CAPACITY - 1>;

// The start of the reason is enough: it mostly quotes the reply, which is shown anyway.
using reason_text = fixed_text<500>;

struct attempt {
  int result = -1;
  int wget_status = NO_WGET_STATUS;
  heard_text heard;
  reason_text reason;  // for a failure, or a doubt
};

text_buffer* hearing = nullptr;  // where hear() puts the replies, in the child

void hear(std::string_view reply) { hearing->append_text(reply); }

// The child is a background process, in which wget would write its messages to a file "wget-log" if its input were a
// terminal. The shell's messages are not needed, because its exit status is known.
void leave_terminal() {
  const int nowhere = open("/dev/null", O_RDWR | O_CLOEXEC);
  dup2(nowhere, STDIN_FILENO);
  dup2(nowhere, STDERR_FILENO);
}

// Prepares the process like the uploader, with the time limit of a step.
void begin() {
  prepare_process();
  limit_wget();
  leave_terminal();
  alarm(STEP_SECONDS);
}

// Returns the command's status as pclose() does.
int run_command(const std::string& command, text_buffer& heard) {
  std::FILE* const pipe = popen(command.c_str(), "re");
  if (pipe == nullptr) return -1;
  char bytes[512];
  for (ssize_t count = 0; (count = read(fileno(pipe), bytes, sizeof bytes)) > 0;)
    heard.append_text({bytes, static_cast<std::size_t>(count)});
  return pclose(pipe);
}

// The run's command without its logger.
std::string mail_command() {
  fixed_text<5 * PATH_CAPACITY> command;
  append_mail_command(command);
  return std::string(command.view().substr(0, command.view().rfind(" | ")));
}

// Opens a temporary file that holds the text as standard input. Returns false with the reason in errno.
bool read_from_now(const std::string& text) {
  std::FILE* const file = std::tmpfile();
  return file != nullptr && std::fputs(text.c_str(), file) >= 0 && std::fflush(file) == 0 &&
         lseek(fileno(file), 0, SEEK_SET) == 0 && dup2(fileno(file), STDIN_FILENO) >= 0;
}

void send_mail(const upload& upload, attempt& made) {
  if (!read_from_now(text_of(upload, *current_station()))) {
    made.reason.append("no temporary file: %s", std::strerror(errno));
    return;
  }
  made.result = 0;
  const std::string fault = program_fault(appliance_path(MAIL_PROGRAM_PATH));
  const int status = fault.empty() ? run_command(mail_command(), made.heard) : 0;
  if (!fault.empty())
    made.reason.append("the mail program cannot be run: %s", fault.c_str());
  else if (status != 0)
    made.reason.append("the mail program ended with status %d",
                       WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status));
}

// Compares the copies with what is composed now and with `before`, because the clock may have moved on meanwhile.
void read_back(const pull_file& file, const std::string& before, text_buffer& reason) {
  const std::string after = text_of(file, *current_station());
  for (const char* const directory : PULL_DIRECTORIES) {
    const std::string path = appliance_path(directory) + file.name;
    const std::string there = file_start(path, COMMAND_CAPACITY + 1);
    if (reason.empty() && there != before && there != after)
      reason.append("%s does not hold what was written", path.c_str());
  }
}

std::string_view reason_of(int result) {
  if (result == 0) return latest_exchange.doubt;
  return latest_exchange.is_command_quoted ? "its command could not be run" : error_text.view();
}

void send(const upload& upload, attempt& made) {
  const std::string before = text_of(upload, *current_station());
  made.result = upload.send();
  made.wget_status = latest_exchange.wget_status;
  made.reason.append_text(reason_of(made.result));
  if (upload.by == carrier::file && made.result == 0)
    read_back(static_cast<const pull_file&>(upload), before, made.reason);
}

int send_in_child(const upload& upload, attempt& made) {
  begin();
  hearing = &made.heard;
  reply_listener = hear;
  if (upload.by == carrier::mail)
    send_mail(upload, made);
  else
    send(upload, made);
  return 0;
}

int run_in_child(const std::string& command, text_buffer& heard) {
  begin();
  return run_command(command, heard) == 0 ? 0 : 1;
}

std::string without_secrets(text_buffer& text) {
  hide_secrets(text, station_settings);
  return std::string(text.view()) + (text.was_cut() ? " ..." : "");
}

verdict verdict_of(const child_process& child, const attempt& made) {
  if (child.signal() == SIGALRM) return verdict::ended_by_alarm;
  if (child.exit_status() != 0 || made.result != 0) return verdict::failed;
  return made.reason.empty() ? verdict::accepted : verdict::unclear;
}

}  // namespace

trial_result try_upload(const upload& upload) {
  const shared_value<attempt> made;
  child_process child([&] { return send_in_child(upload, *made); });
  child.wait();
  return {.outcome = verdict_of(child, *made),
          .wget_status = made->wget_status,
          .reply = without_secrets(made->heard),
          .reason = without_secrets(made->reason)};
}

std::string messages_of_wget(const upload& upload) {
  constexpr std::string_view SILENT = " -q -O ";
  std::string command = text_of(upload, *current_station());
  const std::size_t place = command.substr(0, command.find('"')).find(SILENT);
  if (place == std::string::npos) return {};
  command.erase(place, 3);
  command += " 2>&1";  // not every command includes wget's messages
  const shared_value<heard_text> heard;
  child_process child([&] { return run_in_child(command, *heard); });
  child.wait();
  return without_secrets(*heard);
}

}  // namespace skypost
