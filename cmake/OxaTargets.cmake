# SPDX-License-Identifier: Apache-2.0
# Common settings of all targets, and functions that declare libraries and tests.

add_library(oxa_options INTERFACE)
target_compile_definitions(oxa_options INTERFACE QT_NO_KEYWORDS QT_NO_FOREACH)
if(OXA_QT EQUAL 6) # deprecates what Qt 5.15 has no other name for
    target_compile_definitions(oxa_options INTERFACE QT_NO_DEPRECATED_WARNINGS)
endif()
target_compile_options(oxa_options INTERFACE -Wall -Wextra -Wpedantic $<$<BOOL:${OXA_WERROR}>:-Werror>)

set(OXA_QT_LEAST 5.15)
if(OXA_QT EQUAL 6)
    set(OXA_QT_LEAST 6.4)
endif()

# oxa_find_qt(COMPONENT ...): of the version OXA_QT.
macro(oxa_find_qt)
    find_package(Qt${OXA_QT} ${OXA_QT_LEAST} REQUIRED COMPONENTS ${ARGV})
endmacro()

# Where data is, from the prefix of an installation and from the build tree.
set(OXA_DATA_DIR ${CMAKE_INSTALL_DATADIR}/oxautils)
set(OXA_IP_DIR ${OXA_DATA_DIR}/ip)
set(OXA_DEVICE_DIR ${CMAKE_INSTALL_DATADIR}/device)

# oxa_install(...): install(...), for those who install.
function(oxa_install)
    if(OXA_INSTALL)
        install(${ARGV})
    endif()
endfunction()

# oxa_add_library(TARGET NAME LIBNAME DEFINE): a shared library, exported as OxaUtils::NAME. While the
# version is 0.x, its interface may change with the minor number, so that both are in the SONAME.
function(oxa_add_library target name output define)
    add_library(${target} SHARED)
    add_library(OxaUtils::${name} ALIAS ${target})
    set_target_properties(${target} PROPERTIES
        EXPORT_NAME ${name}
        OUTPUT_NAME ${output}
        VERSION ${PROJECT_VERSION}
        SOVERSION ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR})
    target_compile_features(${target} PUBLIC cxx_std_17)
    target_compile_definitions(${target} PRIVATE ${define})
    target_link_libraries(${target} PRIVATE $<BUILD_INTERFACE:oxa_options>)
    set_property(GLOBAL APPEND PROPERTY OXA_EXPORTED_TARGETS ${target})
endfunction()

# Seconds after which a hanging test is ended: enough for the slowest test on a busy machine.
set(OXA_TEST_LIMIT 2400)

# oxa_add_test(NAME SOURCES ... [LIBS ...] [DEFINES ...] [LABELS ...]): a QtTest program, run by
# ctest under NAME. OXA_SOURCE_DIR and OXA_BINARY_DIR are the paths of the trees. Labels: preset tsan
# runs `threads`; preset asan skips `once`, where a sanitizer checks little.
function(oxa_add_test name)
    cmake_parse_arguments(PARSE_ARGV 1 ARG "" "" "SOURCES;LIBS;DEFINES;LABELS")
    add_executable(${name} ${ARG_SOURCES})
    set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/tests)
    target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests)
    target_compile_definitions(${name} PRIVATE
        OXA_SOURCE_DIR="${PROJECT_SOURCE_DIR}"
        OXA_BINARY_DIR="${PROJECT_BINARY_DIR}"
        ${ARG_DEFINES})
    target_link_libraries(${name} PRIVATE oxa_options Qt${OXA_QT}::Test ${ARG_LIBS})
    add_test(NAME ${name} COMMAND ${name})
    set_tests_properties(${name} PROPERTIES
        TIMEOUT ${OXA_TEST_LIMIT}
        LABELS "${ARG_LABELS}"
        ENVIRONMENT "QT_QPA_PLATFORM=offscreen;QTEST_FUNCTION_TIMEOUT=${OXA_TEST_LIMIT}000;TSAN_OPTIONS=ignore_noninstrumented_modules=1;LSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/tests/lsan.supp:print_suppressions=0")
    if("threads" IN_LIST ARG_LABELS)
        add_dependencies(thread_tests ${name})
    endif()
endfunction()

# oxa_install_manual(FILE): installs a manual page, compressed as in Debian.
function(oxa_install_manual file)
    get_filename_component(name ${file} NAME)
    set(page ${PROJECT_BINARY_DIR}/share/man/man1/${name}.gz)
    add_custom_command(
        OUTPUT ${page}
        COMMAND ${CMAKE_COMMAND} -E make_directory ${PROJECT_BINARY_DIR}/share/man/man1
        COMMAND gzip -9nc ${file} > ${page}
        DEPENDS ${file}
        VERBATIM)
    add_custom_target(manual_${name} ALL DEPENDS ${page})
    oxa_install(FILES ${page} DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
endfunction()
