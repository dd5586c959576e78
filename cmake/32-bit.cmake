# The host's own compiler for 32-bit programs. Its multilib package has no <asm/> headers; the
# 64-bit ones are used.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR i686)
set(CMAKE_C_COMPILER gcc-12)
set(CMAKE_CXX_COMPILER g++-12)
foreach(language C CXX)
  set(CMAKE_${language}_FLAGS_INIT "-m32 -idirafter /usr/include/x86_64-linux-gnu")
endforeach()
set(CMAKE_CROSSCOMPILING_EMULATOR "")
