#pragma once

#include <string>

#include "compose/upload.h"

namespace skypost {

// The complete text of an upload with "***" for each password and passcode, and for what is made of them. A secret
// that is not set stays as it is.
std::string text_without_secrets(const upload& upload, const station& source);

}  // namespace skypost
