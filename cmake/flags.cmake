# garnel::base carries what every library and the executable are compiled with.

add_library(garnel_base INTERFACE)
add_library(garnel::base ALIAS garnel_base)
target_include_directories(garnel_base INTERFACE ${CMAKE_SOURCE_DIR})
target_compile_definitions(garnel_base INTERFACE _FILE_OFFSET_BITS=64)
target_compile_options(garnel_base INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wformat=2 -Werror
  # Threads do not exist here, so local statics need no guards from the C++ run-time library.
  -fno-exceptions -fno-rtti -fno-threadsafe-statics)

if(CMAKE_BUILD_TYPE STREQUAL "Release")
  # Only what is reached is linked, and no unwind tables are loaded: the executable stays small, and fewer
  # pages are touched before main.
  target_compile_options(garnel_base INTERFACE
    -ffunction-sections -fdata-sections -fno-asynchronous-unwind-tables -fno-unwind-tables -fno-plt)
  if(NOT CMAKE_TOOLCHAIN_FILE)
    # glibc checks the sizes of what it is given, and every frame with an array is guarded: as dear as nothing.
    target_compile_definitions(garnel_base INTERFACE _FORTIFY_SOURCE=2)
    # Its headers then also warn of unused results, for which g++ takes no "(void)"; the other builds look for those.
    target_compile_options(garnel_base INTERFACE -fstack-protector-strong -Wno-unused-result)
  endif()
endif()

if(GARNEL_SANITIZE)
  set(sanitizers -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  if(GARNEL_FUZZ)
    list(APPEND sanitizers -fsanitize=fuzzer-no-link)
  endif()
  target_compile_options(garnel_base INTERFACE ${sanitizers})
  target_link_options(garnel_base INTERFACE ${sanitizers})
endif()

if(GARNEL_COVERAGE)
  target_compile_options(garnel_base INTERFACE --coverage -fprofile-abs-path)
  target_link_options(garnel_base INTERFACE --coverage)
endif()

# The toolbox is small because most of it is compiled for size: what is not loaded costs nothing at the start.
# These few files hold the loops that data goes through by the gigabyte.
function(garnel_fast)
  if(CMAKE_BUILD_TYPE STREQUAL "Release")
    set_source_files_properties(${ARGN} PROPERTIES COMPILE_OPTIONS -O2)
  endif()
endfunction()

# What the executable is linked with: the C library alone.
function(garnel_link_options target)
  if(NOT CMAKE_BUILD_TYPE STREQUAL "Release")
    return()
  endif()
  target_link_options(${target} PRIVATE -Wl,--gc-sections -Wl,--build-id=none)
  if(CMAKE_TOOLCHAIN_FILE)
    # One segment less to map, and no second mprotect before main. The variables follow the code in the file
    # without filling up its last page.
    target_link_options(${target} PRIVATE -Wl,-z,noseparate-code -Wl,-z,norelro -Wl,-z,common-page-size=512
      -Wl,-T,${CMAKE_SOURCE_DIR}/cmake/startup.ld)
    set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS ${CMAKE_SOURCE_DIR}/cmake/startup.ld)
  else()
    # g++ would add the C++ and mathematics libraries by itself.
    target_link_options(${target} PRIVATE -nodefaultlibs)
    target_link_libraries(${target} PRIVATE -lc -lgcc)
  endif()
  # The symbols stay beside the executable, for debuggers and for ./dev lint.
  add_custom_command(TARGET ${target} POST_BUILD
    COMMAND ${CMAKE_COMMAND} -E copy $<TARGET_FILE:${target}> $<TARGET_FILE:${target}>.symbols
    COMMAND ${CMAKE_STRIP} $<TARGET_FILE:${target}>)
endfunction()
