# Toolchain: Debian's cross compiler and C library for the architecture BOARD_ARCH (Debian's name). BOARD_FILES is the
# folder into which scripts/lib/foreign unpacks libcrypto and musl for it.

set(CMAKE_TRY_COMPILE_PLATFORM_VARIABLES BOARD_ARCH BOARD_FILES)

#                  compiler's prefix      folder of libraries     musl's folder
set(board_amd64    x86_64-linux-gnu       x86_64-linux-gnu        x86_64-linux-musl)
set(board_i386     i686-linux-gnu         i386-linux-gnu          i386-linux-musl)
set(board_armel    arm-linux-gnueabi      arm-linux-gnueabi       arm-linux-musleabi)
set(board_armhf    arm-linux-gnueabihf    arm-linux-gnueabihf     arm-linux-musleabihf)
set(board_arm64    aarch64-linux-gnu      aarch64-linux-gnu       aarch64-linux-musl)
set(board_mipsel   mipsel-linux-gnu       mipsel-linux-gnu        mipsel-linux-musl)
set(board_s390x    s390x-linux-gnu        s390x-linux-gnu         s390x-linux-musl)
if(NOT DEFINED board_${BOARD_ARCH})
  message(FATAL_ERROR "BOARD_ARCH is \"${BOARD_ARCH}\"; known are amd64, i386, armel, armhf, arm64, mipsel and s390x.")
endif()
list(GET board_${BOARD_ARCH} 0 prefix)
list(GET board_${BOARD_ARCH} 1 libraries)
list(GET board_${BOARD_ARCH} 2 musl)

set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR ${BOARD_ARCH})
set(CMAKE_C_COMPILER ${prefix}-gcc)
set(CMAKE_CXX_COMPILER ${prefix}-g++)

# Emulators that run the tests on this machine. An armel processor has no floating point.
set(emulator_armel qemu-arm -cpu arm926)
set(emulator_armhf qemu-arm)
set(emulator_arm64 qemu-aarch64)
set(emulator_mipsel qemu-mipsel)
set(emulator_s390x qemu-s390x)
if(emulator_${BOARD_ARCH})
  set(CMAKE_CROSSCOMPILING_EMULATOR ${emulator_${BOARD_ARCH}} -L /usr/${prefix})
else()
  # An amd64 processor runs these programs itself. (qemu 7.2 hangs if a program for i386 starts a thread.)
  file(GLOB loader /usr/${prefix}/lib/ld-linux*.so.2)
  set(CMAKE_CROSSCOMPILING_EMULATOR ${loader} --library-path /usr/${prefix}/lib)
endif()

# Silences g++'s notes about an old change in how ARM passes some types.
set(CMAKE_CXX_FLAGS_INIT -Wno-psabi)

set(CRYPTO_INCLUDE_DIR ${BOARD_FILES}/usr/include ${BOARD_FILES}/usr/include/${libraries} CACHE STRING "")
set(CRYPTO_LIBRARY ${BOARD_FILES}/usr/lib/${libraries}/libcrypto.a CACHE FILEPATH "")
