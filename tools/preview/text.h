#pragma once

#include <iosfwd>

#include "preview/preview.h"

namespace skypost {

// Prints the page for a terminal.
void print_text(std::ostream& out, const preview_page& page);

}  // namespace skypost
