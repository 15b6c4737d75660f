# Functions that all CMakeLists.txt use, for folders of logic, of windows and of tests, and for programs.
# The link lines of the folders show the architecture. Keep them minimal, and PRIVATE unless a header needs them.

add_library(qbx_options INTERFACE)
target_compile_options(qbx_options INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Werror)
target_compile_definitions(qbx_options INTERFACE QT_NO_CAST_TO_ASCII QT_NO_CAST_FROM_BYTEARRAY QT_NO_URL_CAST_FROM_STRING
                                                 QT_NO_FOREACH QT_NO_KEYWORDS)
target_include_directories(qbx_options INTERFACE ${PROJECT_SOURCE_DIR}/src)
if(QBX_SANITIZE)
  target_compile_options(qbx_options INTERFACE -fsanitize=address,undefined -fno-omit-frame-pointer -fno-sanitize-recover=all)
  target_link_options(qbx_options INTERFACE -fsanitize=address,undefined)
endif()

# The headers that nearly every file includes are compiled once and shared.
file(CONFIGURE OUTPUT ${CMAKE_BINARY_DIR}/pch/pch.cpp CONTENT "")
add_library(qbx_pch STATIC ${CMAKE_BINARY_DIR}/pch/pch.cpp)
target_link_libraries(qbx_pch PUBLIC qbx_options Qt6::Core)
target_precompile_headers(qbx_pch PRIVATE <QDateTime> <QHash> <QString> <QStringList> <QVariant> <functional> <memory> <optional>
                          <string> <variant> <vector>)

# qbx_reuse_pch(<target> <pch target>) lets the target use the compiled headers of <pch target>.
function(qbx_reuse_pch target from)
  if(QBX_PCH)
    target_precompile_headers(${target} REUSE_FROM ${from})
  endif()
endfunction()

# qbx_library(<folder>) makes the library qbx_<folder> from every .cpp beside the caller. A main.cpp is left to
# qbx_program.
function(qbx_library name)
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp)
  list(FILTER sources EXCLUDE REGEX "/main\\.cpp$")
  add_library(qbx_${name} STATIC ${sources})
  target_link_libraries(qbx_${name} PUBLIC qbx_options Qt6::Core)
  qbx_reuse_pch(qbx_${name} qbx_pch)
endfunction()

# The same for windows, which also share the widget headers.
add_library(qbx_widgets_pch STATIC ${CMAKE_BINARY_DIR}/pch/pch.cpp)
target_link_libraries(qbx_widgets_pch PUBLIC qbx_options Qt6::Core Qt6::Gui Qt6::Widgets)
target_precompile_headers(qbx_widgets_pch PRIVATE <QDateTime> <QHash> <QString> <QStringList> <QVariant> <QtWidgets> <functional> <memory>
                          <optional> <vector>)

# qbx_ui_library(<folder>) makes the library qbx_<folder>_ui from every .cpp beside the caller, the ui/ folder of
# <folder>. A Designer file frmX.ui is turned into "ui_frmX.h".
function(qbx_ui_library name)
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp)
  file(GLOB forms CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.ui)
  qt_wrap_ui(form_headers ${forms})
  add_library(qbx_${name}_ui STATIC ${sources} ${form_headers})
  target_include_directories(qbx_${name}_ui SYSTEM PRIVATE ${CMAKE_CURRENT_BINARY_DIR})
  target_link_libraries(qbx_${name}_ui PUBLIC qbx_options Qt6::Core Qt6::Gui Qt6::Widgets)
  set_target_properties(qbx_${name}_ui PROPERTIES AUTOMOC ON)
  qbx_reuse_pch(qbx_${name}_ui qbx_widgets_pch)
endfunction()

# qbx_program(<folder>) makes the program <folder> from the main.cpp beside the caller and the folder's library.
function(qbx_program name)
  add_executable(${name} main.cpp)
  target_link_libraries(${name} PRIVATE qbx_${name} ${ARGN})
endfunction()

# qbx_tests(<folder> [WINDOWS] [WIRE] [IN_ENGINE <filter>] LINKS ...) makes one GoogleTest program <folder>_test from
# every .cpp beside the caller. Each test is a CTest test <folder>.Suite.Name. WINDOWS: the tests need windows or fonts.
# WIRE: each test also runs as wire.<folder>.Suite.Name, through SQL Server's protocol (support/wire). The filter
# IN_ENGINE excludes tests of the engine itself.
function(qbx_tests name)
  cmake_parse_arguments(arg "WINDOWS;WIRE" "IN_ENGINE" "LINKS" ${ARGN})
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp)
  if(arg_WINDOWS)
    list(APPEND sources ${PROJECT_SOURCE_DIR}/tests/support/windows/main.cpp)
    list(APPEND arg_LINKS Qt6::Widgets)
  endif()
  add_executable(${name}_test ${sources})
  target_link_libraries(${name}_test PRIVATE ${arg_LINKS} qbx_test_support)
  qbx_reuse_pch(${name}_test qbx_test_pch)
  gtest_discover_tests(${name}_test TEST_PREFIX ${name}. DISCOVERY_TIMEOUT 60 PROPERTIES TIMEOUT 120)
  if(arg_WIRE)
    target_link_libraries(${name}_test PRIVATE qbx_test_wire)
    gtest_discover_tests(${name}_test TEST_PREFIX wire.${name}. TEST_LIST ${name}_wire_tests TEST_FILTER "-${arg_IN_ENGINE}" DISCOVERY_TIMEOUT 60
                         PROPERTIES TIMEOUT 120 ENVIRONMENT QBX_TEST_WIRE=1)
  endif()
endfunction()
