# clang with LLVM's libc++, the compiler and standard library of the macOS toolchain. Debian's
# prebuilt GoogleTest is built against libstdc++, so the tests build GoogleTest from source.
set(CMAKE_C_COMPILER clang)
set(CMAKE_CXX_COMPILER clang++)
set(CMAKE_CXX_FLAGS_INIT "-stdlib=libc++")
set(CMAKE_EXE_LINKER_FLAGS_INIT "-stdlib=libc++")
set(CMAKE_MODULE_LINKER_FLAGS_INIT "-stdlib=libc++")
set(CMAKE_SHARED_LINKER_FLAGS_INIT "-stdlib=libc++")
set(QUILLON_GTEST_SOURCE_DIR /usr/src/googletest CACHE PATH "")
