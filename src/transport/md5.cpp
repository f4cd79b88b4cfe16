// The networks that take a hashed password take MD5; libcrypto counts it as deprecated.
#define OPENSSL_SUPPRESS_DEPRECATED

#include "transport/md5.h"

#include <openssl/md5.h>

namespace skypost {

text_buffer& md5_hex(std::string_view text, text_buffer& out) {
  unsigned char digest[MD5_DIGEST_LENGTH];
  MD5(reinterpret_cast<const unsigned char*>(text.data()), text.size(), digest);
  out.clear();
  for (const unsigned char byte : digest) out.append("%02x", byte);
  return out;
}

}  // namespace skypost
