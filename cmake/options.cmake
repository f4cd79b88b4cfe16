add_library(skypost_options INTERFACE)
target_compile_options(skypost_options INTERFACE
  -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Wformat=2
  $<$<CXX_COMPILER_ID:Clang>:-Wreserved-identifier>
  -ffunction-sections -fdata-sections)
# Allows times beyond 2038 and large files on 32-bit boards.
target_compile_definitions(skypost_options INTERFACE _FILE_OFFSET_BITS=64 _TIME_BITS=64)
target_link_options(skypost_options INTERFACE -Wl,--gc-sections)

if(SKYPOST_SANITIZE)
  target_compile_options(skypost_options INTERFACE
    -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(skypost_options INTERFACE -fsanitize=address,undefined)
else()
  # Not every compiler and processor supports these. cf-protection is for 64-bit only, because its endbranch
  # instructions are illegal on some i586 boards.
  include(CheckCXXCompilerFlag)
  set(hardening stack-clash-protection trivial-auto-var-init=zero)
  if(CMAKE_SIZEOF_VOID_P EQUAL 8)
    list(APPEND hardening cf-protection)
  endif()
  foreach(flag IN LISTS hardening)
    string(MAKE_C_IDENTIFIER "COMPILER_HAS_${flag}" has_flag)
    check_cxx_compiler_flag("-f${flag}" ${has_flag})
    if(${has_flag})
      target_compile_options(skypost_options INTERFACE $<$<CONFIG:Release>:-f${flag}>)
    endif()
  endforeach()
  target_link_options(skypost_options INTERFACE -Wl,-z,relro,-z,now -Wl,-z,noexecstack)
  if(SKYPOST_STATIC)
    # A static PIE would be 5 to 66 KB larger, relocate 20 to 37 KiB of tables at each start and, with musl 1.2.3, leave
    # the tables writable. Stack, heap and mappings are randomised anyway.
    target_compile_options(skypost_options INTERFACE -fno-pie)
    target_link_options(skypost_options INTERFACE -static -no-pie)
  else()
    target_compile_options(skypost_options INTERFACE -fPIE)
    target_link_options(skypost_options INTERFACE -fPIE -pie)
  endif()
endif()

# MD5 comes from libcrypto's static archive, so nothing has to be installed on the board.
find_library(CRYPTO_LIBRARY NAMES libcrypto.a)
if(NOT CRYPTO_LIBRARY)
  message(FATAL_ERROR "There is no libcrypto.a. Where only the shared library exists, -DCRYPTO_LIBRARY=/path/libcrypto.so "
    "links that one, and the programs need it wherever they run.")
endif()
find_path(CRYPTO_INCLUDE_DIR openssl/md5.h REQUIRED)
add_library(skypost_crypto INTERFACE)
target_include_directories(skypost_crypto SYSTEM INTERFACE ${CRYPTO_INCLUDE_DIR})
target_link_libraries(skypost_crypto INTERFACE ${CRYPTO_LIBRARY})
