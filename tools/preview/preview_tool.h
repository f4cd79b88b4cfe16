#pragma once

#include "common/tool.h"

namespace skypost {

// The program `skypost-preview`, which shows what a run would send and sends nothing. Its exit status is 0; 1 if
// settings or report cannot be read; 2 for an invalid command line.
extern const tool PREVIEW_TOOL;

}  // namespace skypost
