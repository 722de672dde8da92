# SPDX-License-Identifier: Apache-2.0
# cpack: one Debian package with the library, its headers, the programs and the cores. Preset
# `package` configures its build: for /usr, without run paths.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME oxautils)
set(CPACK_PACKAGE_VENDOR OxaUtils)
set(CPACK_PACKAGE_CONTACT "OxaUtils maintainers <maintainers@oxautils.invalid>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "embedded logic analyzers for FPGA designs")
set(CPACK_PACKAGE_DESCRIPTION
    "OxaUtils turns a configuration file (signals to watch, a condition to wait for)
into the Verilog of an analyzer that lives inside the design, a netlist of it,
and an account of what it costs.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION electronics)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_LIBRARY_OUTPUT_DIRECTORY})
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS yosys)
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "iverilog, openocd")
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "gtkwave, verilator")

# Files that only a Debian package needs.
set(deb_doc ${CMAKE_INSTALL_DATADIR}/doc/oxautils)
file(WRITE ${PROJECT_BINARY_DIR}/deb/changelog
    "oxautils (${PROJECT_VERSION}) unstable; urgency=low\n\n"
    "  * See CHANGELOG.md.\n\n"
    " -- ${CPACK_PACKAGE_CONTACT}  Sat, 21 Nov 2026 00:00:00 +0000\n")
execute_process(COMMAND gzip -9nf ${PROJECT_BINARY_DIR}/deb/changelog)
file(WRITE ${PROJECT_BINARY_DIR}/deb/copyright
    "Format: https://www.debian.org/doc/packaging-manuals/copyright-format/1.0/\n"
    "Upstream-Name: OxaUtils\n\nFiles: *\nCopyright: 2026 OxaUtils maintainers\nLicense: Apache-2.0\n"
    " The full text is in /usr/share/common-licenses/Apache-2.0.\n")
file(WRITE ${PROJECT_BINARY_DIR}/deb/triggers "activate-noawait ldconfig\n")
set(CPACK_DEBIAN_PACKAGE_CONTROL_EXTRA ${PROJECT_BINARY_DIR}/deb/triggers)
install(FILES ${PROJECT_BINARY_DIR}/deb/copyright ${PROJECT_BINARY_DIR}/deb/changelog.gz
    DESTINATION ${deb_doc})

include(CPack)
