# What CPack does when its packages are made.
foreach(file IN LISTS CPACK_PACKAGE_FILES)
  if(file MATCHES "[.]deb$")
    execute_process(COMMAND ${CMAKE_CURRENT_LIST_DIR}/package-size ${file} COMMAND_ERROR_IS_FATAL ANY)
  endif()
endforeach()
