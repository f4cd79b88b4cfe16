#pragma once

#include <iosfwd>

#include "preview/preview.h"

namespace skypost {

// Prints the page as self-contained HTML, which loads and runs nothing.
void print_html(std::ostream& out, const preview_page& page);

}  // namespace skypost
