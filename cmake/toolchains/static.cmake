# Programs for this machine that need no shared library: Debian has no archives of the stylesheet processor, so
# scripts/target-libraries builds them.
set(CMAKE_C_COMPILER gcc)
set(CMAKE_CXX_COMPILER g++)
set(RIGBAKE_TARGET_LIBRARIES "" CACHE PATH "Libraries built for the target")
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES RIGBAKE_TARGET_LIBRARIES)
set(CMAKE_PREFIX_PATH ${RIGBAKE_TARGET_LIBRARIES})
set(CMAKE_FIND_PACKAGE_PREFER_CONFIG ON)
