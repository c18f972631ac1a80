# What every target of the project has in common. Policy lives here, the folders only say what they consist of.

set(CMAKE_CXX_STANDARD 17)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_AUTOMOC ON)
set(CMAKE_AUTOUIC ON)
set(CMAKE_AUTORCC ON)
set(CMAKE_INCLUDE_CURRENT_DIR OFF)

include(GNUInstallDirs)
# The build tree is laid out as an installed one: programs, the framework's library and the plug-ins find each other by
# the same relative paths in both, wherever they are moved. No absolute or empty folder gets into a binary's RUNPATH: an
# empty one would be the current folder of the process.
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/${CMAKE_INSTALL_BINDIR}")
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/${CMAKE_INSTALL_LIBDIR}")
set(KRA_PLUGIN_DIR "${CMAKE_INSTALL_LIBDIR}/kra/plugins")
set(KRA_CONSOLE_TRANSLATIONS_DIR "${CMAKE_INSTALL_DATADIR}/kra/translations")
file(RELATIVE_PATH KRA_LIBRARIES_FROM_PROGRAMS "${CMAKE_INSTALL_FULL_BINDIR}" "${CMAKE_INSTALL_FULL_LIBDIR}")
file(RELATIVE_PATH KRA_DATA_FROM_PROGRAMS "${CMAKE_INSTALL_FULL_BINDIR}" "${CMAKE_INSTALL_FULL_DATADIR}")
set(CMAKE_BUILD_WITH_INSTALL_RPATH ON)
set(CMAKE_INSTALL_RPATH "\$ORIGIN/${KRA_LIBRARIES_FROM_PROGRAMS}")

option(KRA_BUILD_TESTS "Build the tests, the benchmarks and the demo" ON)
option(KRA_WERROR "Take warnings for errors" OFF)
set(KRA_SANITIZE "" CACHE STRING "Sanitizers to build with: empty, address (with undefined) or thread")

find_program(KRA_CCACHE ccache)
if(KRA_CCACHE)
  set(CMAKE_CXX_COMPILER_LAUNCHER "${KRA_CCACHE}")
endif()

add_compile_options(-Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Wold-style-cast
                    -Wcast-qual -Wformat=2 -Wimplicit-fallthrough)
if(KRA_WERROR)
  add_compile_options(-Werror)
endif()
add_compile_definitions(QT_DEPRECATED_WARNINGS QT_DISABLE_DEPRECATED_BEFORE=0x050F00 QT_NO_CAST_TO_ASCII
                        QT_NO_URL_CAST_FROM_STRING QT_NO_KEYWORDS QT_NO_CAST_FROM_ASCII)
# What dpkg-buildflags gives with hardening=+all, and the checks of the standard library that cost little. Sanitizers
# bring checks of their own, which the fortified functions would hide from them.
if(NOT KRA_SANITIZE)
  add_compile_options(-fstack-protector-strong -fstack-clash-protection -fcf-protection -Werror=format-security)
  add_compile_definitions($<$<NOT:$<CONFIG:Debug>>:_FORTIFY_SOURCE=2> _GLIBCXX_ASSERTIONS)
  add_link_options(LINKER:-z,relro LINKER:-z,now)
  # A library that lacks a symbol is found when it is linked, not when it is loaded.
  string(APPEND CMAKE_SHARED_LINKER_FLAGS " -Wl,-z,defs")
  string(APPEND CMAKE_MODULE_LINKER_FLAGS " -Wl,-z,defs")
endif()
if(KRA_SANITIZE STREQUAL "address")
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
  # Without OpenGL, with which nothing here draws: its library is unloaded before leaks are looked for, and a leak in a
  # library without a name could not be told from one of ours.
  set(KRA_SANITIZER_ENVIRONMENT
      "QT_XCB_GL_INTEGRATION=none"
      "ASAN_OPTIONS=detect_leaks=1:detect_stack_use_after_return=1"
      "LSAN_OPTIONS=suppressions=${CMAKE_SOURCE_DIR}/tests/sanitizers/leaks.txt:print_suppressions=0"
      "UBSAN_OPTIONS=print_stacktrace=1")
elseif(KRA_SANITIZE STREQUAL "thread")
  add_compile_options(-fsanitize=thread -fno-omit-frame-pointer)
  add_link_options(-fsanitize=thread)
  set(KRA_SANITIZER_ENVIRONMENT "TSAN_OPTIONS=suppressions=${CMAKE_SOURCE_DIR}/tests/sanitizers/threads.txt")
elseif(NOT KRA_SANITIZE STREQUAL "")
  message(FATAL_ERROR "KRA_SANITIZE is \"${KRA_SANITIZE}\"; it may be empty, \"address\" or \"thread\".")
endif()

# kra_folder(target SOURCES … [USES …]): one folder of the project as one library.
#
# A target sees the headers of its own folder and of the folders it uses, and no others: that is how a wrong include
# does not compile.
function(kra_folder target)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;USES")
  add_library(${target} STATIC ${arg_SOURCES})
  target_include_directories(${target} PUBLIC "${CMAKE_CURRENT_SOURCE_DIR}")
  target_link_libraries(${target} PUBLIC ${arg_USES})
endfunction()

# kra_test(name KIND kind [SOURCES …] [USES …] [IN_MACHINE [option…]]): one test program from name.cpp, run by ctest
# under the label of its kind, from its own source folder, where its data stands. A test that skips anything has failed.
#
#   unit, framework  values and the console framework, with nothing replaced
#   sandbox          another /etc, PATH and kernel around the code (tests/rig/sandbox)
#   screen           a real X server for each, one at a time, since two at once may choose the same server number
#   sample           what a stranger writes against the framework
#   machine          a disposable virtual machine (tests/rig/machine), one at a time, since each takes all processors;
#                    with IN_MACHINE the test itself runs in one, as root, started with these options
function(kra_test name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "KIND" "SOURCES;USES;IN_MACHINE")
  add_executable(${name} ${name}.cpp ${arg_SOURCES})
  target_link_libraries(${name} PRIVATE Qt5::Test ${arg_USES})

  set(command ${name})
  set(platform offscreen)
  set(properties TIMEOUT 120)
  if(arg_KIND STREQUAL "screen")
    set(command xvfb-run --auto-servernum "--server-args=-screen 0 1600x1200x24 -nolisten tcp" $<TARGET_FILE:${name}>)
    set(platform xcb)
    set(properties TIMEOUT 300 RESOURCE_LOCK display)
  elseif(arg_KIND STREQUAL "machine")
    set(properties TIMEOUT 900 RUN_SERIAL ON)
    if("IN_MACHINE" IN_LIST ARGN)
      set(command "${CMAKE_SOURCE_DIR}/tests/rig/machine/machine" run ${arg_IN_MACHINE})
      foreach(variable QT_QPA_PLATFORM=${platform} ${KRA_SANITIZER_ENVIRONMENT})
        list(APPEND command --env "${variable}")
      endforeach()
      list(APPEND command -- $<TARGET_FILE:${name}>)
    endif()
  elseif(NOT arg_KIND MATCHES "^(unit|framework|sandbox|sample)$")
    message(FATAL_ERROR "${name} is of the kind \"${arg_KIND}\", which ./test does not know.")
  endif()
  add_test(NAME ${name} COMMAND ${command} WORKING_DIRECTORY "${CMAKE_CURRENT_SOURCE_DIR}")
  set_tests_properties(${name} PROPERTIES
    LABELS "${arg_KIND}"
    ENVIRONMENT "QT_QPA_PLATFORM=${platform};${KRA_SANITIZER_ENVIRONMENT}"
    FAIL_REGULAR_EXPRESSION "(^|\n)SKIP   : "
    ${properties})
endfunction()
