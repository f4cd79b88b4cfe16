#pragma once

#include <stdexcept>
#include <string>

namespace skypost {

// A tool cannot do what it was asked to. The text is one line for the user.
struct tool_error : std::runtime_error {
  explicit tool_error(const std::string& text, int its_status = 1)
      : std::runtime_error(text), status(its_status) {}
  int status;  // exit status
};

struct usage_error : tool_error {
  explicit usage_error(const std::string& text) : tool_error(text, 2) {}
};

}  // namespace skypost
