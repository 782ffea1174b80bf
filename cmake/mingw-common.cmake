# Shared part of the mingw toolchain files. Prefers the posix thread model
# variant of the compiler when Debian installed it (std::mutex needs it on
# older mingw runtimes), else the default one.
foreach(_t4_variant "-posix" "")
  if(EXISTS /usr/bin/${T4_MINGW_TRIPLE}-g++${_t4_variant})
    set(CMAKE_CXX_COMPILER /usr/bin/${T4_MINGW_TRIPLE}-g++${_t4_variant})
    set(CMAKE_C_COMPILER /usr/bin/${T4_MINGW_TRIPLE}-gcc${_t4_variant})
    break()
  endif()
endforeach()
set(CMAKE_RC_COMPILER /usr/bin/${T4_MINGW_TRIPLE}-windres)
set(T4_WIDL /usr/bin/${T4_MINGW_TRIPLE}-widl)
set(CMAKE_FIND_ROOT_PATH /usr/${T4_MINGW_TRIPLE})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
# The DLL and the test programs must need nothing but system DLLs.
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static -static-libgcc -static-libstdc++")
set(CMAKE_SHARED_LINKER_FLAGS_INIT "-static -static-libgcc -static-libstdc++")
