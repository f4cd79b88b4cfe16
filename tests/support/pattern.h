#pragma once

#include <string>
#include <vector>

// Regular expressions as in std::regex. Its header takes as long to compile as a test file, so only pattern.cpp
// includes it.
namespace skypost::testing {

// The first match and what its groups matched; empty if there is none.
std::vector<std::string> first_match(const std::string& text, const std::string& pattern);

// Every match, one after the other.
std::vector<std::string> all_matches(const std::string& text, const std::string& pattern);

// Every match becomes `to`, in which $1 is the first group.
std::string with_matches_as(const std::string& text, const std::string& pattern, const std::string& to);

}  // namespace skypost::testing
