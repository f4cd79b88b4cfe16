#pragma once

#include <optional>
#include <string>
#include <vector>

namespace skypost {

// The words of a command line.
using words = std::vector<std::string>;

// Takes an option out of the arguments; false when it is not there.
bool take_option(words& arguments, const std::string& option);

// The same for an option with the name of a file after it. Throws usage_error when there is none.
std::optional<std::string> take_file_option(words& arguments, const std::string& option);

// What is left is no option: one that starts with a dash is unknown, and a file of that name is given as
// ./-name. Throws usage_error for it.
const std::string& as_operand(const std::string& argument);

}  // namespace skypost
