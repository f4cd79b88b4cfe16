#pragma once

#include <string>

#include "common/field_descriptions.h"
#include "compose/upload.h"

// Facts about a network, found by calling its composer.
namespace skypost {

// The complete text of an upload.
std::string text_of(const upload& upload, const station& source);

// True if this text or passcode has not been entered. Other numbers count as entered.
bool is_unset(const settings_record& settings, const field_description& row);

// True if the setting is unset and would change the upload's text.
bool is_text_lacking(const upload& upload, const station& source, const field_description& row);

// True if the upload sends the setting as a value in a query or a form.
bool is_url_value(const upload& upload, const station& source, const text_field& field);

// True if the upload contains the board's hardware address.
bool is_hardware_address_told(const upload& upload, const station& source);

}  // namespace skypost
