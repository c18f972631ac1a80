# Where an installation differs from a copy of the build tree. To be included before the first folder.

# These two folders are part of what pages and plug-ins name, and stay where they are whatever the prefix.
set(KRA_WMFUNC_DIR "/usr/bin" CACHE STRING "Where the command of the window manager is installed")
set(KRA_TRANSLATIONS_DIR "/usr/share/zel/translations/zel-admin-tev" CACHE STRING
    "Where the plug-in's catalogues are installed")

# The first thing that an installation does: it looks whether it can be completed.
install(SCRIPT "${CMAKE_BINARY_DIR}/complete.cmake")

# kra_finish_installation(TARGET…): to be called last, with what is installed and has to be built first.
function(kra_finish_installation)
  add_custom_target(kra-installed DEPENDS ${ARGN})
  set(KRA_INSTALLED_FILES "")
  foreach(target IN LISTS ARGN)
    get_target_property(type ${target} TYPE)
    if(type STREQUAL "UTILITY")
      get_target_property(files ${target} KRA_FILES)
    else()
      set(files "$<TARGET_FILE:${target}>")
    endif()
    list(APPEND KRA_INSTALLED_FILES ${files})
  endforeach()
  list(JOIN KRA_INSTALLED_FILES "\" \"" KRA_INSTALLED_FILES)
  configure_file("${CMAKE_SOURCE_DIR}/packaging/complete.cmake.in" "${CMAKE_BINARY_DIR}/complete.cmake.in" @ONLY)
  file(GENERATE OUTPUT "${CMAKE_BINARY_DIR}/complete.cmake" INPUT "${CMAKE_BINARY_DIR}/complete.cmake.in")
  configure_file("${CMAKE_SOURCE_DIR}/packaging/searchpath.cmake.in" "${CMAKE_BINARY_DIR}/searchpath.cmake" @ONLY)
  install(SCRIPT "${CMAKE_BINARY_DIR}/searchpath.cmake")
endfunction()
