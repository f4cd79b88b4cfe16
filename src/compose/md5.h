#pragma once

#include <string_view>

#include "base/text.h"

namespace skypost {

using md5_text = fixed_text<32>;

// Writes the MD5 digest of `text` (RFC 1321) to `out`, as lower-case hexadecimal digits in place of what it held, and
// returns `out`.
md5_text& md5_hex(std::string_view text, md5_text& out);

}  // namespace skypost
