// The networks that take a hashed password take MD5; libcrypto counts it as deprecated.
#define OPENSSL_SUPPRESS_DEPRECATED

#include "compose/md5.h"

#include <openssl/crypto.h>
#include <openssl/md5.h>
#include <string.h>

// What MD5 wipes its state with. libcrypto's own definition would bring the detection of the processor's
// features along, and on some boards that wants more of the C library than the board has.
extern "C" void OPENSSL_cleanse(void* place, std::size_t size) { explicit_bzero(place, size); }

namespace skypost {

md5_text& md5_hex(std::string_view text, md5_text& out) {
  unsigned char digest[MD5_DIGEST_LENGTH];
  MD5(reinterpret_cast<const unsigned char*>(text.data()), text.size(), digest);
  out.clear();
  for (const unsigned char byte : digest) out.append("%02x", byte);
  return out;
}

}  // namespace skypost
