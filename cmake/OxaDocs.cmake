# SPDX-License-Identifier: Apache-2.0
# The target `docs`: the public headers and the pages of docs/ as HTML. Any warning is an error.
find_package(Doxygen 1.9.4 REQUIRED)

set(DOXYGEN_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/docs)
# Made anew after each configuration, so that no page stays that is gone.
file(REMOVE_RECURSE ${PROJECT_BINARY_DIR}/docs ${PROJECT_BINARY_DIR}/docs.stamp)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS cmake/html-page.awk)
set(DOXYGEN_WARN_AS_ERROR FAIL_ON_WARNINGS)
set(DOXYGEN_QUIET YES)
set(DOXYGEN_RECURSIVE NO) # files are listed; directories of pictures are not to be searched for copies
set(DOXYGEN_HAVE_DOT NO)
set(DOXYGEN_GENERATE_TREEVIEW YES)
set(DOXYGEN_JAVADOC_AUTOBRIEF YES)
set(DOXYGEN_DISTRIBUTE_GROUP_DOC YES)
set(DOXYGEN_VERBATIM_HEADERS NO)
set(DOXYGEN_USE_MDFILE_AS_MAINPAGE ${PROJECT_SOURCE_DIR}/README.md)
set(DOXYGEN_IMAGE_PATH ${PROJECT_SOURCE_DIR}/docs/images)
set(DOXYGEN_STRIP_FROM_PATH ${PROJECT_SOURCE_DIR} ${OXA_GENERATED_INCLUDE_DIR})
set(DOXYGEN_STRIP_FROM_INC_PATH
    ${PROJECT_SOURCE_DIR}/platform ${PROJECT_SOURCE_DIR} ${OXA_GENERATED_INCLUDE_DIR})
set(DOXYGEN_FILTER_PATTERNS "*.md=awk -v root=${PROJECT_SOURCE_DIR} -f ${PROJECT_SOURCE_DIR}/cmake/html-page.awk")
set(DOXYGEN_MACRO_EXPANSION YES)
set(DOXYGEN_EXPAND_ONLY_PREDEF YES)
set(DOXYGEN_PREDEFINED
    OXAUTILS_EXPORT= OXACAPTURE_EXPORT= OXADEV_EXPORT= OXANORVOSYN_EXPORT=
    Q_OBJECT= Q_SLOTS=slots Q_SIGNALS=signals "Q_DISABLE_COPY(x)=")

set(headers ${OXA_GENERATED_INCLUDE_DIR}/oxautils/oxautils_version.h)
get_property(exported GLOBAL PROPERTY OXA_EXPORTED_TARGETS)
foreach(target IN LISTS exported)
    get_target_property(files ${target} HEADER_SET)
    list(APPEND headers ${files})
endforeach()
file(GLOB pages CONFIGURE_DEPENDS docs/*.md docs/boards/*.md)
doxygen_add_docs(docs ALL ${headers} README.md CONTRIBUTING.md CHANGELOG.md examples/soc/README.md
    ${pages} USE_STAMP_FILE)

install(DIRECTORY ${PROJECT_BINARY_DIR}/docs/html DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/oxautils)
