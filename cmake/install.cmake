# What an installation holds besides the executable, and the packages made of one. Man pages need pandoc: without it
# there are none. Made in the builds that are installed, not in those that test (GARNEL_DOCS).

set(docs ${CMAKE_SOURCE_DIR}/cmake/docs)
set(made ${CMAKE_BINARY_DIR}/docs)
file(STRINGS ${CMAKE_SOURCE_DIR}/app/version.cpp version REGEX "garnel_version")
string(REGEX REPLACE ".*\"(.*)\".*" "\\1" version "${version}")

set(completions ${made}/garnel.bash ${made}/_garnel ${made}/garnel.fish)
add_custom_command(OUTPUT ${completions}
  COMMAND ${docs}/completions $<TARGET_FILE:garnel> ${made}
  DEPENDS garnel ${docs}/completions ${docs}/garnel.bash ${docs}/_garnel ${docs}/garnel.fish
  VERBATIM)

set(man_pages)
find_program(GARNEL_PANDOC pandoc)
if(GARNEL_PANDOC)
  file(GLOB pages CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/docs/garnel.md ${CMAKE_SOURCE_DIR}/docs/commands/*.md)
  file(MAKE_DIRECTORY ${made}/man)
  foreach(page IN LISTS pages)
    cmake_path(GET page STEM name)
    if(NOT name STREQUAL garnel)
      string(PREPEND name garnel-)
    endif()
    add_custom_command(OUTPUT ${made}/man/${name}.1.gz
      COMMAND ${docs}/man-page ${page} ${version} ${made}/man/${name}.1.gz
      DEPENDS ${page} ${docs}/man-page VERBATIM)
    list(APPEND man_pages ${made}/man/${name}.1.gz)
  endforeach()
else()
  message(STATUS "no man pages: pandoc is missing")
endif()
add_custom_target(docs ALL DEPENDS ${completions} ${man_pages})

install(FILES ${man_pages} DESTINATION share/man/man1)
install(FILES ${made}/garnel.bash DESTINATION share/bash-completion/completions RENAME garnel)
install(FILES ${made}/garnel.fish DESTINATION share/fish/vendor_completions.d)
install(FILES ${CMAKE_SOURCE_DIR}/README.md DESTINATION share/doc/garnel)
install(DIRECTORY ${CMAKE_SOURCE_DIR}/docs DESTINATION share/doc/garnel USE_SOURCE_PERMISSIONS)
# Names of links are no matter for CMake, whose lists cannot hold "[". And Debian keeps what packages bring for zsh
# where nobody else looks.
install(CODE "
  set(prefix \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}\")
  if(prefix MATCHES \"/usr$\")
    file(INSTALL ${made}/_garnel DESTINATION \"\${CMAKE_INSTALL_PREFIX}/share/zsh/vendor-completions\")
  else()
    file(INSTALL ${made}/_garnel DESTINATION \"\${CMAKE_INSTALL_PREFIX}/share/zsh/site-functions\")
  endif()
  execute_process(COMMAND ${docs}/install-links $<TARGET_FILE:garnel> \"\${prefix}\" COMMAND_ERROR_IS_FATAL ANY)")

set(CPACK_GENERATOR DEB TGZ)
set(CPACK_PACKAGE_NAME garnel)
set(CPACK_PACKAGE_VERSION ${version})
set(CPACK_PACKAGE_CONTACT "the garnel developers <garnel@localhost>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "toolbox of 53 small commands in one executable")
set(CPACK_PACKAGE_DESCRIPTION "Commands for files, text streams, shells and the system, for places where a start must
cost nothing: initial RAM disks, containers, rescue images. The links in /usr/lib/garnel/bin replace nothing of the
system; put that directory into PATH to use them.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS OFF)
if(NOT CMAKE_EXE_LINKER_FLAGS MATCHES "-static")
  set(CPACK_DEBIAN_PACKAGE_DEPENDS libc6)
endif()
set(CPACK_STRIP_FILES OFF)
set(CPACK_POST_BUILD_SCRIPTS ${docs}/package.cmake)
if(EXISTS ${CMAKE_SOURCE_DIR}/LICENSE)
  set(CPACK_RESOURCE_FILE_LICENSE ${CMAKE_SOURCE_DIR}/LICENSE)
  install(FILES ${CMAKE_SOURCE_DIR}/LICENSE DESTINATION share/doc/garnel RENAME copyright)
endif()
include(CPack)
