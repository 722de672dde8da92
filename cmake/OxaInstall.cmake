# SPDX-License-Identifier: Apache-2.0
# cmake --install PREFIX, with the package for find_package(OxaUtils).
include(CMakePackageConfigHelpers)

get_property(exported GLOBAL PROPERTY OXA_EXPORTED_TARGETS)
foreach(target IN LISTS exported)
    set_property(TARGET ${target} PROPERTY INSTALL_RPATH "$ORIGIN")
    install(TARGETS ${target}
        EXPORT OxaUtilsTargets
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
        FILE_SET HEADERS DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
endforeach()

install(FILES ${OXA_GENERATED_INCLUDE_DIR}/oxautils/oxautils_version.h
    DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/oxautils)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/OxaUtils)
install(EXPORT OxaUtilsTargets NAMESPACE OxaUtils:: DESTINATION ${package_dir})
configure_package_config_file(cmake/OxaUtilsConfig.cmake.in
    ${PROJECT_BINARY_DIR}/OxaUtilsConfig.cmake
    INSTALL_DESTINATION ${package_dir}
    PATH_VARS OXA_DATA_DIR OXA_IP_DIR OXA_DEVICE_DIR)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/OxaUtilsConfigVersion.cmake
    COMPATIBILITY SameMinorVersion)
install(FILES
    ${PROJECT_BINARY_DIR}/OxaUtilsConfig.cmake
    ${PROJECT_BINARY_DIR}/OxaUtilsConfigVersion.cmake
    DESTINATION ${package_dir})

# A path relative to the .pc file, so that the prefix can be moved.
string(REGEX REPLACE "[^/]+" ".." OXA_PC_TO_PREFIX ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
set(pc_names oxautils)
if(OXA_BUILD_CAPTURE)
    list(APPEND pc_names oxacapture)
endif()
foreach(name IN LISTS pc_names)
    configure_file(cmake/${name}.pc.in ${PROJECT_BINARY_DIR}/${name}.pc @ONLY)
    install(FILES ${PROJECT_BINARY_DIR}/${name}.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
endforeach()
install(FILES LICENSE README.md CHANGELOG.md DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/oxautils)
# With the pages' pictures and examples.
install(DIRECTORY docs examples DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/oxautils)
