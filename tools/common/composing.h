#pragma once

#include <string>

#include "common/field_descriptions.h"
#include "compose/upload.h"

// Facts about a network, derived from its composer alone.
namespace skypost {

// The complete text of an upload.
std::string text_of(const upload& upload, const station& source);

// True if this text or passcode has not been entered. Other numbers count as entered.
bool is_unset(const settings_record& settings, const field_description& row);

// True if filling in this unset setting would change the text.
bool is_text_lacking(const upload& upload, const station& source, const field_description& row);

// True if the text contains the setting as a value of a query or a form.
bool is_url_value(const upload& upload, const station& source, const text_field& field);

// True if the text contains the board's hardware address.
bool is_hardware_address_told(const upload& upload, const station& source);

}  // namespace skypost
