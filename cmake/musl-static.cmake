# Toolchain of the release build: g++ compiling C++20 against musl, linked statically without the C++
# run-time library.
#
# Why: a shell script pays for the start of a program on every line. A static musl executable starts within a
# hair of an empty process; with glibc, or with the C++ run-time library, a start costs several times as much.
#
# How: Debian's musl-tools bring a wrapper for the C compiler only. g++ is therefore told to forget its own
# include folders (-nostdinc) and given, in this order, its C++ folders, musl's folder and the compiler's own
# header folder. All three are asked of the compilers, so that no version stands here. libstdc++ was configured
# for glibc and asks __GLIBC_PREREQ, which musl does not define: answering "no" lets the header-only parts
# compile. Linking goes through musl-gcc, which knows musl's start files and library folder.
#
# Only header-only parts of the C++ library work this way (string_view, span, array, algorithm, optional,
# charconv, bit, utility, type_traits, ...). What needs the run-time library fails to link, which is intended.

set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR ${CMAKE_HOST_SYSTEM_PROCESSOR})

find_program(GARNEL_MUSL_GCC musl-gcc REQUIRED)
set(CMAKE_CXX_COMPILER g++)
# A test program would be linked by g++ against glibc's start files: compiling one is proof enough.
set(CMAKE_TRY_COMPILE_TARGET_TYPE STATIC_LIBRARY)

# The folders of the system include path that a compiler prints with -v, as a list.
function(garnel_include_folders result)
  execute_process(COMMAND ${ARGN} -E -v /dev/null OUTPUT_QUIET ERROR_VARIABLE text COMMAND_ERROR_IS_FATAL ANY)
  string(REGEX REPLACE ".*#include <[.][.][.]> search starts here:\n(.*)End of search list.*" "\\1" text "${text}")
  string(REGEX MATCHALL "[^ \n]+" folders "${text}")
  set(${result} ${folders} PARENT_SCOPE)
endfunction()

garnel_include_folders(cxx_folders g++ -x c++)
garnel_include_folders(musl_folders ${GARNEL_MUSL_GCC} -x c)
list(FILTER cxx_folders INCLUDE REGEX "/c\\+\\+/")

# Addresses are fixed and nothing is aligned beyond need: smaller, and faster to start than what can be moved.
set(flags "-fno-pie -malign-data=abi -nostdinc \"-D__GLIBC_PREREQ(a,b)=0\"")
foreach(folder IN LISTS cxx_folders musl_folders)
  string(APPEND flags " -isystem ${folder}")
endforeach()
set(CMAKE_CXX_FLAGS_INIT "${flags}")

# musl's driver links. It knows nothing of C++, so no C++ run-time library reaches the command line.
set(CMAKE_CXX_LINK_EXECUTABLE
    "${GARNEL_MUSL_GCC} <CMAKE_CXX_LINK_FLAGS> <LINK_FLAGS> <OBJECTS> -o <TARGET> <LINK_LIBRARIES>")
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static -no-pie")
