#pragma once

#include <string>

namespace skypost {

// A setting of wget, from /etc/wgetrc and then the appliance's own file; the last line counts. Empty if it is not set.
std::string wget_setting(const std::string& name);

struct wget_proxy {
  std::string address;   // without a login; empty if there is no proxy
  std::string named_by;  // "http_proxy in /etc/skypost/wgetrc"
};

// The proxy that wget would use for "http" or "https".
wget_proxy proxy_for(const std::string& scheme);

}  // namespace skypost
