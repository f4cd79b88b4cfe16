// Linked into static programs only. libcrypto's MD5 wipes its state with this function. The original lies in one object
// with libcrypto's processor detection, which needs functions of glibc on ARMv7.

#include <openssl/crypto.h>
#include <string.h>

extern "C" void OPENSSL_cleanse(void* place, std::size_t size) { explicit_bzero(place, size); }
