#pragma once

#include <stdexcept>
#include <string>

namespace skypost {

// Why a tool cannot do what it was asked to; one line for the user.
struct tool_error : std::runtime_error {
  explicit tool_error(const std::string& text, int its_status = 1)
      : std::runtime_error(text), status(its_status) {}
  int status;  // exit status
};

// An invalid command line.
struct usage_error : tool_error {
  explicit usage_error(const std::string& text) : tool_error(text, 2) {}
};

}  // namespace skypost
