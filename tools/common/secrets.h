#pragma once

#include "base/text.h"
#include "settings/record.h"

namespace skypost {

// Replaces by "***" every password and passcode of the settings that `text` contains, as it is, percent-encoded or as in
// a page, and every long hexadecimal number, such as the digest of a password. If the text was cut, so is what may be
// the beginning of one at its end. What has fewer than three characters stays: it is part of too many words, and their
// stars would tell it.
void hide_secrets(text_buffer& text, const settings_record& settings);

}  // namespace skypost
