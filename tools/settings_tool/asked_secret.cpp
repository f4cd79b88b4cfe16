#include "settings_tool/asked_secret.h"

#include <termios.h>
#include <unistd.h>

#include <iostream>

#include "common/errors.h"

namespace skypost {
namespace {

// While this exists, a terminal shows nothing of what is typed.
class silence {
 public:
  silence() : is_terminal_(tcgetattr(STDIN_FILENO, &before_) == 0) {
    termios silent = before_;
    silent.c_lflag &= ~static_cast<tcflag_t>(ECHO);
    if (is_terminal_) tcsetattr(STDIN_FILENO, TCSAFLUSH, &silent);
  }
  ~silence() {
    if (is_terminal_) tcsetattr(STDIN_FILENO, TCSAFLUSH, &before_);
  }
  silence(const silence&) = delete;
  silence& operator=(const silence&) = delete;

  bool is_terminal() const { return is_terminal_; }

 private:
  termios before_{};
  bool is_terminal_;
};

std::string read_secret(const std::string& prompt) {
  std::cerr << prompt << std::flush;
  std::string line;
  if (!std::getline(std::cin, line)) throw tool_error("no password was entered");
  if (!prompt.empty()) std::cerr << '\n';
  return line;
}

}  // namespace

std::string asked_secret(const std::string& name) {
  const silence until_entered;
  if (!until_entered.is_terminal()) return read_secret("");
  const std::string secret = read_secret(name + ": ");
  if (read_secret(name + " once more: ") != secret) throw tool_error(name + " was entered in two ways");
  return secret;
}

}  // namespace skypost
