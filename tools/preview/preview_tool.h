#pragma once

#include "common/tool.h"

namespace skypost {

// The program `skypost-preview`, which shows what a run would send, without sending it.
extern const tool PREVIEW_TOOL;

}  // namespace skypost
