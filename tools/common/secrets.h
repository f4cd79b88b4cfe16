#pragma once

#include "base/text.h"
#include "settings/record.h"

namespace skypost {

// Replaces with "***" each password and passcode of the settings that `text` contains (plain, percent-encoded, or as
// HTML, JSON or wget write it) and each long hexadecimal number, which may be a password's digest. If the text was
// truncated, a partial secret at its end is hidden, too. Secrets shorter than three characters are left alone: they
// occur in too many ordinary words, and the stars would reveal them.
void hide_secrets(text_buffer& text, const settings_record& settings);

}  // namespace skypost
