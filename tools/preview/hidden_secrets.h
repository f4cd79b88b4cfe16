#pragma once

#include <string>

#include "compose/upload.h"

namespace skypost {

// The complete text of an upload with "***" in place of each password, passcode and password digest. Unset secrets stay
// as they are.
std::string text_without_secrets(const upload& upload, const station& source);

}  // namespace skypost
