#pragma once

#include <optional>
#include <string>
#include <vector>

namespace skypost {

// The arguments of a program or of one of its commands. Options may be anywhere before "--".
using words = std::vector<std::string>;

// Removes an option; false if it was not given.
bool take_option(words& arguments, const std::string& option);

// Removes an option with the name of a file, "--report FILE" or "--report=FILE", and returns the name. Throws
// usage_error if FILE is missing.
std::optional<std::string> take_file_option(words& arguments, const std::string& option);

// What remains after every known option has been removed, without the "--". Throws usage_error for an unknown
// option; does not repeat it if it may be a password.
words operands(words arguments, bool may_be_password = false);

}  // namespace skypost
