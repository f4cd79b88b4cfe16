// Only for static programs. libcrypto's MD5 wipes its state with this function. libcrypto's own version brings
// processor detection along, which needs functions of glibc on ARMv7.

#include <openssl/crypto.h>
#include <string.h>

extern "C" void OPENSSL_cleanse(void* place, std::size_t size) { explicit_bzero(place, size); }
