#pragma once

#include "live/numbered_record.h"
#include "transport/md5.h"

namespace skypost {

// The content of a field that holds a password's MD5 digest: made_by(append_digest<...>).
template <const text_field& password>
void append_digest(text_buffer& record, const record_source& from) {
  fixed_text<32> digest;
  record.append_text(md5_hex(from.settings.text(password), digest).view());
}

}  // namespace skypost
