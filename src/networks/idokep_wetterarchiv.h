#pragma once

#include "networks/http_network.h"

namespace skypost {

extern const http_network IDOKEP;
extern const http_network WETTERARCHIV;

// Each sends the current values once and returns 0, or -1 with the reason in `error_text`.
int upload_idokep();
int upload_wetterarchiv();

}  // namespace skypost
