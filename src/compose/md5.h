#pragma once

#include <string_view>

#include "base/text.h"

namespace skypost {

// The MD5 digest of `text` (RFC 1321) as 32 lower-case hexadecimal digits. Replaces what `out` held,
// which has room for 32 characters or more, and returns it.
text_buffer& md5_hex(std::string_view text, text_buffer& out);

}  // namespace skypost
