#pragma once

#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

#include "common/settings_file.h"

// The commands of `skypost-settings`. Each takes the words after its name, writes what was asked for to `out`
// and returns the exit status. Each throws usage_error for words that it does not take, and tool_error when it
// cannot do what they say.
namespace skypost {

using words = std::vector<std::string>;

struct usage_error : tool_error {
  using tool_error::tool_error;
};

// What a check was to look at cannot be read.
struct unreadable_error : tool_error {
  using tool_error::tool_error;
};

int run_new(const words& arguments, std::ostream& out);
int run_show(const words& arguments, std::ostream& out);
int run_names(const words& arguments, std::ostream& out);
int run_set(const words& arguments, std::ostream& out);
int run_sensors(const words& arguments, std::ostream& out);
int run_check(const words& arguments, std::ostream& out);

// Takes an option out of the arguments; false when it is not there.
bool take_option(words& arguments, const std::string& option);

// The same for an option with a value after it. Throws usage_error when there is none.
std::optional<std::string> take_option_value(words& arguments, const std::string& option);

// A path among the arguments: one that starts with a dash is taken for an option, and given as ./-name.
// Throws usage_error for it.
const std::string& as_path(const std::string& argument);

}  // namespace skypost
