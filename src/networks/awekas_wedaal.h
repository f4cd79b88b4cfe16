#pragma once

#include "networks/http_network.h"

namespace skypost {

extern const http_network AWEKAS;
extern const http_network WEDAAL;

// Each sends the current values once and returns 0, or -1 with the reason in `error_text`.
int push_awekas();
int push_wedaal();

}  // namespace skypost
