#include "settings_tool/trial.h"

#include <fcntl.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>

#include "base/error_text.h"
#include "common/child_process.h"
#include "common/composing.h"
#include "common/secrets.h"
#include "common/shared_value.h"
#include "run/process.h"
#include "run/run_list.h"
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
  reason_text reason;
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

int send_in_child(const upload& upload, attempt& made) {
  begin();
  hearing = &made.heard;
  reply_listener = hear;
  made.result = upload.send();
  made.wget_status = latest_exchange.wget_status;
  made.reason.append_text(latest_exchange.is_command_quoted ? "its command could not be run"
                                                            : error_text.view());
  return 0;
}

int run_in_child(const std::string& command, text_buffer& heard) {
  begin();
  std::FILE* const pipe = popen(command.c_str(), "re");
  if (pipe == nullptr) return 1;
  char bytes[512];
  for (ssize_t count = 0; (count = read(fileno(pipe), bytes, sizeof bytes)) > 0;)
    heard.append_text({bytes, static_cast<std::size_t>(count)});
  return pclose(pipe);
}

std::string without_secrets(text_buffer& text) {
  hide_secrets(text, station_settings);
  return std::string(text.view()) + (text.was_cut() ? " ..." : "");
}

verdict verdict_of(const child_process& child, const attempt& made) {
  if (child.signal() == SIGALRM) return verdict::ended_by_alarm;
  return child.exit_status() == 0 && made.result == 0 ? verdict::accepted : verdict::failed;
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
