#pragma once

#include <optional>
#include <string>
#include <vector>

namespace skypost {

// The arguments of a program or of one of its commands. Options may be anywhere before "--".
using words = std::vector<std::string>;

// Removes an option. Returns false if it was not given.
bool take_option(words& arguments, const std::string& option);

// Removes "--report FILE" or "--report=FILE" and returns FILE; nullopt if the option was not given. Throws usage_error
// if it has no FILE.
std::optional<std::string> take_file_option(words& arguments, const std::string& option);

// Returns the arguments without "--". Remove all known options first: throws usage_error for any that is left, which it
// does not quote if it may be a password.
words operands(words arguments, bool may_be_password = false);

}  // namespace skypost
