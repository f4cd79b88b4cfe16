#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "common/request_parts.h"
#include "settings/record.h"

// What is made of a password is found without looking for it: the same text is composed twice, with
// different words in the place of every secret, and what differs between the two comes from a secret. The
// secret itself is in neither.
namespace skypost {

inline constexpr char HIDDEN[] = "***";

// The settings with every secret replaced, by one of two words that have no character in common. A secret
// that is not set stays as it is.
settings_record with_secrets_replaced(const settings_record& settings, bool by_second_word);

// Each takes what was composed with the one and with the other word in it and returns it with HIDDEN in place
// of each word of a text, or each field of a parameter, in which the two differ.
std::string with_differences_hidden(std::string_view one, std::string_view other);
std::vector<request_parameter> with_differences_hidden(const std::vector<request_parameter>& one,
                                                       const std::vector<request_parameter>& other);
request_parts with_differences_hidden(const request_parts& one, const request_parts& other);

}  // namespace skypost
