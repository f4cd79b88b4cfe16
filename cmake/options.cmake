# What every target of the project is compiled and linked with.

add_library(skypost_options INTERFACE)
target_compile_options(skypost_options INTERFACE
  -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Wformat=2 -Werror
  -ffunction-sections -fdata-sections)
# Times beyond 2038 and large files on 32-bit boards too.
target_compile_definitions(skypost_options INTERFACE _FILE_OFFSET_BITS=64 _TIME_BITS=64)
target_link_options(skypost_options INTERFACE -Wl,--gc-sections)

if(SKYPOST_FUZZ)
  set(SKYPOST_SANITIZE ON)
  target_compile_options(skypost_options INTERFACE -O1 -fsanitize=fuzzer-no-link)
endif()
if(SKYPOST_SANITIZE)
  target_compile_options(skypost_options INTERFACE
    -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(skypost_options INTERFACE -fsanitize=address,undefined)
else()
  target_compile_options(skypost_options INTERFACE
    $<$<CONFIG:Release>:-U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=3> -fstack-protector-strong)
  target_link_options(skypost_options INTERFACE -Wl,-z,relro,-z,now -Wl,-z,noexecstack)
  if(SKYPOST_STATIC)
    # A static program at a fixed address: its tables are read from the file and never written. A static one at a
    # random address relocates 20 to 37 KiB of tables into memory of its own at each start, is 5 to 66 KB larger,
    # and musl 1.2.3 would leave those tables writable. Stack, heap and mappings are at random addresses anyhow.
    target_compile_options(skypost_options INTERFACE -fno-pie)
    target_link_options(skypost_options INTERFACE -static -no-pie)
  else()
    target_compile_options(skypost_options INTERFACE -fPIE)
    target_link_options(skypost_options INTERFACE -pie)
  endif()
endif()

# Size goes before speed: the program waits for networks.
set(CMAKE_CXX_FLAGS_RELEASE "-Os -DNDEBUG -fno-plt")

# MD5 comes from libcrypto's static archive: nothing to install on the board.
find_path(CRYPTO_INCLUDE_DIR openssl/md5.h REQUIRED)
find_library(CRYPTO_LIBRARY NAMES libcrypto.a REQUIRED)
add_library(skypost_crypto INTERFACE)
target_include_directories(skypost_crypto SYSTEM INTERFACE ${CRYPTO_INCLUDE_DIR})
target_link_libraries(skypost_crypto INTERFACE ${CRYPTO_LIBRARY})
