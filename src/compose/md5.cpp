// Some networks take the MD5 digest of the password. libcrypto has deprecated MD5.
#define OPENSSL_SUPPRESS_DEPRECATED

#include "compose/md5.h"

#include <openssl/md5.h>

namespace skypost {

md5_text& md5_hex(std::string_view text, md5_text& out) {
  unsigned char digest[MD5_DIGEST_LENGTH];
  MD5(reinterpret_cast<const unsigned char*>(text.data()), text.size(), digest);
  out.clear();
  for (const unsigned char byte : digest) out.append("%02x", byte);
  return out;
}

}  // namespace skypost
