#pragma once

#include <string>

#include "compose/outgoing.h"

namespace skypost {

// The complete text of an upload with "***" for each password and passcode, and for what is made of them. A secret
// that is not set stays as it is.
std::string text_without_secrets(const outgoing& upload, const station& source);

}  // namespace skypost
