# Shared by the two mingw-w64 toolchains. The posix thread model is used because googletest
# needs std::mutex; the C and C++ runtimes are linked statically so Vireo.dll needs nothing
# beside it.
find_program(CMAKE_C_COMPILER NAMES ${CORVINA_MINGW_PREFIX}-gcc-posix ${CORVINA_MINGW_PREFIX}-gcc REQUIRED)
find_program(CMAKE_CXX_COMPILER NAMES ${CORVINA_MINGW_PREFIX}-g++-posix ${CORVINA_MINGW_PREFIX}-g++ REQUIRED)
find_program(CMAKE_RC_COMPILER NAMES ${CORVINA_MINGW_PREFIX}-windres REQUIRED)
set(CMAKE_FIND_ROOT_PATH /usr/${CORVINA_MINGW_PREFIX})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static -static-libgcc -static-libstdc++")
set(CMAKE_SHARED_LINKER_FLAGS_INIT "-static -static-libgcc -static-libstdc++")
