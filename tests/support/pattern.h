#pragma once

#include <string>
#include <vector>

// Wraps std::regex, whose header takes as long to compile as a test file: only pattern.cpp includes it.
namespace skypost::testing {

// Returns the first match, followed by its groups; empty if there is no match.
std::vector<std::string> first_match(const std::string& text, const std::string& pattern);

std::vector<std::string> all_matches(const std::string& text, const std::string& pattern);

// Replaces every match by `to`, in which $1 is the first group.
std::string with_matches_as(const std::string& text, const std::string& pattern, const std::string& to);

}  // namespace skypost::testing
