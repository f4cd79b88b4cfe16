#pragma once

#include <string>

#include "compose/outgoing.h"
#include "settings/field_descriptions.h"

// What can be learned of a network by composing for it, so that it follows from its composer alone.
namespace skypost {

// What `what` hands out.
std::string text_of(const outgoing& what, const station& from);

// True when nobody has entered this text or this passcode. Other numbers are never unset.
bool is_unset(const settings_record& settings, const field_description& row);

// True when the text would be another one with a value in a setting that is not set.
bool is_text_lacking(const outgoing& what, const station& from, const field_description& row);

// True when the text tells the network the board's hardware address.
bool is_hardware_address_told(const outgoing& what, const station& from);

}  // namespace skypost
