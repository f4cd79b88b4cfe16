#include "run/process.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>

#include "base/paths.h"

namespace skypost {
namespace {

void ignore_signal(int) {}

void set_action(int signal_number, void (*handler)(int)) {
  struct sigaction action {};
  action.sa_handler = handler;
  action.sa_flags = SA_RESTART;
  sigaction(signal_number, &action, nullptr);
}

}  // namespace

void prepare_process() {
  // If a standard descriptor were closed, a socket could become descriptor 2 and receive error messages.
  int descriptor = 0;
  do {
    descriptor = open("/dev/null", O_RDWR);
  } while (descriptor >= 0 && descriptor <= STDERR_FILENO);
  if (descriptor > STDERR_FILENO) close(descriptor);

  // A running alarm survives exec, and so does a SIGALRM that is blocked and pending; SIG_IGN discards the latter.
  alarm(0);
  set_action(SIGALRM, SIG_IGN);
  set_action(SIGALRM, SIG_DFL);
  set_action(SIGCHLD, SIG_DFL);
  // Unlike SIG_IGN, a handler is reset on exec.
  set_action(SIGPIPE, ignore_signal);
  set_action(SIGXFSZ, ignore_signal);
  sigset_t none;
  sigemptyset(&none);
  sigprocmask(SIG_SETMASK, &none, nullptr);
  umask(022);
  // MeteoNews is judged by wget's English messages. In a locale such as GBK, a shell can take the backslash before a
  // quote for half a character, and then run part of a server's reply.
  setenv("LC_ALL", "C", 1);
}

void limit_wget() {
  const char* const inherited = std::getenv("WGETRC");
  if (inherited != nullptr && *inherited != '\0') return;  // wget ignores an empty value
  const path_text path(WGET_SETTINGS_PATH);
  if (access(path.c_str(), R_OK) == 0) setenv("WGETRC", path.c_str(), 1);
}

}  // namespace skypost
