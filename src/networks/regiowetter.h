#pragma once

#include "networks/http_network.h"

namespace skypost {

extern const http_network REGIOWETTER_BW;
extern const http_network REGIOWETTER;

// Each sends the current values once and returns 0, or -1 with the reason in `error_text`.
int upload_regiowetter_bw();
int upload_regiowetter();

}  // namespace skypost
