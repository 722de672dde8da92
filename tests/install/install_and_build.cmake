# SPDX-License-Identifier: Apache-2.0
function(run)
    execute_process(COMMAND ${ARGV} RESULT_VARIABLE result OUTPUT_VARIABLE out ERROR_VARIABLE err)
    if(NOT result EQUAL 0)
        message(FATAL_ERROR "${ARGV}\nended with ${result}:\n${out}${err}")
    endif()
    string(STRIP "${out}" out)
    set(out "${out}" PARENT_SCOPE)
endfunction()

function(build name source)
    run(${CMAKE_COMMAND} -S ${source} -B ${WORK}/${name} -G ${GENERATOR}
        -DCMAKE_PREFIX_PATH=${WORK}/prefix
        -DCMAKE_CXX_COMPILER=${CXX}
        -DCMAKE_CXX_FLAGS=${CXX_FLAGS})
    run(${CMAKE_COMMAND} --build ${WORK}/${name})
endfunction()

file(REMOVE_RECURSE ${WORK})
run(${CMAKE_COMMAND} --install ${BUILD} --prefix ${WORK}/first)
# Moved, so that nothing in the package may know where it was installed.
file(RENAME ${WORK}/first ${WORK}/prefix)

# The pages are whole: what they show and tell to run is beside them.
set(doc ${WORK}/prefix/share/doc/oxautils)
if(NOT EXISTS ${doc}/docs/images/analyzer.svg)
    message(FATAL_ERROR "the installed README has no pictures")
endif()
build(host ${doc}/examples/host)
run(${WORK}/host/host ${doc}/examples/uart/uart.oxa ${WORK}/generated /ip)
if(NOT out MATCHES "^oxa_std\n.*/ip/OXA/QX_CON/qx_con_top_6k.v\n.*/generated/qx_oxa_top.v")
    message(FATAL_ERROR "the host's own engine was asked for:\n${out}")
endif()

# What the library reports has a category, by which a host can switch it off.
foreach(rules "" "oxautils.*=false")
    execute_process(OUTPUT_QUIET ERROR_VARIABLE err COMMAND ${CMAKE_COMMAND} -E env
        QT_FORCE_STDERR_LOGGING=1 QT_LOGGING_RULES=${rules}
        ${WORK}/host/host ${WORK}/missing.oxa ${WORK}/generated /ip)
    string(FIND "${err}" "oxautils.generate: " at)
    if((at EQUAL -1) EQUAL (rules STREQUAL ""))
        message(FATAL_ERROR "with the rules \"${rules}\" the host reports: ${err}")
    endif()
endforeach()

build(plain ${SOURCE}/tests/install/plain_host)
run(${WORK}/plain/core_host)
run(${WORK}/plain/catalogue_host)
foreach(program plain/core_host prefix/bin/oxa)
    run(ldd ${WORK}/${program})
    if(out MATCHES "Qt[0-9]?(Gui|Widgets)")
        message(FATAL_ERROR "${program} needs a screen's libraries:\n${out}")
    endif()
endforeach()

set(ENV{PKG_CONFIG_PATH} ${WORK}/prefix/${LIBDIR}/pkgconfig)
run(pkg-config --modversion oxautils)
set(version "oxa ${out}")
run(${WORK}/prefix/bin/oxa --version)
if(NOT out STREQUAL version)
    message(FATAL_ERROR "oxa reports ${out}, pkg-config ${version}")
endif()
run(pkg-config --cflags --libs oxautils)
if(NOT out MATCHES "-I${WORK}/prefix/[^ ]*/include" OR NOT out MATCHES "-loxautilseditor -loxautils -loxanorvosyn -loxadev")
    message(FATAL_ERROR "pkg-config said: ${out}")
endif()

# A host without CMake, for whom every header does without conversions from and to ASCII.
run(pkg-config --cflags --libs oxacapture)
separate_arguments(flags UNIX_COMMAND "${out}")
run(${CXX} -std=c++17 -DQT_NO_CAST_FROM_ASCII -DQT_NO_CAST_TO_ASCII -DQT_NO_KEYWORDS
    -include oxacapture/oxacapture.h ${SOURCE}/tests/install/plain_host/main.cpp -o ${WORK}/plain_host
    -MD -MF ${WORK}/included ${flags} -Wl,-rpath,${WORK}/prefix/${LIBDIR})
run(${WORK}/plain_host)
file(READ ${WORK}/included included)
string(REPLACE "\n" " " included "${included}")
file(GLOB_RECURSE headers RELATIVE ${WORK}/prefix ${WORK}/prefix/include/*.h)
foreach(header IN LISTS headers)
    string(FIND "${included}" "/${header} " at)
    if(at EQUAL -1)
        message(FATAL_ERROR "${header} is installed, but neither oxautils.h nor oxacapture.h includes it")
    endif()
endforeach()
run(pkg-config --variable=ipdir oxautils)
if(NOT EXISTS ${out}/OXA/QX_AO_15/qx_ao_top.v)
    message(FATAL_ERROR "no cores are in ${out}")
endif()

# A host that builds the libraries itself.
run(${CMAKE_COMMAND} -S ${SOURCE}/tests/install/subproject_host -B ${WORK}/subproject -G ${GENERATOR}
    -DOXA_SOURCE=${SOURCE} -DOXA_QT=${QT} -DCMAKE_CXX_COMPILER=${CXX} -DCMAKE_CXX_FLAGS=${CXX_FLAGS})
run(${CMAKE_COMMAND} --build ${WORK}/subproject --target catalogue_host oxa_ip)
run(${WORK}/subproject/catalogue_host)
file(READ ${WORK}/subproject/cores core)
if(NOT EXISTS ${core})
    message(FATAL_ERROR "the build of the host made no cores")
endif()
