#pragma once

#include <string_view>

#include "base/text.h"

namespace skypost {

using md5_text = fixed_text<32>;

// Overwrites `out` with the MD5 digest of `text` (RFC 1321) in lower-case hexadecimal digits, and returns it.
md5_text& md5_hex(std::string_view text, md5_text& out);

}  // namespace skypost
