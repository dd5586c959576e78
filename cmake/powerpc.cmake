# 32-bit big-endian PowerPC: static programs, which an emulator runs.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR powerpc)
set(CMAKE_C_COMPILER powerpc-linux-gnu-gcc-12)
set(CMAKE_CXX_COMPILER powerpc-linux-gnu-g++-12)
set(CMAKE_EXE_LINKER_FLAGS_INIT -static)
set(CMAKE_CROSSCOMPILING_EMULATOR qemu-ppc)
