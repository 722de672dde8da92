# SPDX-License-Identifier: Apache-2.0
# Makes the installed cores from their sources.
#
#   cmake -DSOURCE_DIR=ip -DOUTPUT_DIR=.../ip -P expand.cmake
#
# In a source @P@ is the core's position and @NAME@ a variable of this script. "//@insert FILE"
# includes a file; the lines from "//@repeat X N" to "//@end X" are repeated with @X@ from 0 to N - 1
# and @-X@ from N to 1. "//@unused NETS" makes a lint tool, not a simulator, accept nets with unused
# bits.
cmake_policy(VERSION 3.25)

# No lists here: brackets and semicolons have a meaning in CMake's lists, but not in strings.
function(expand_repeats text result)
    set(done "")
    while(TRUE)
        string(FIND "${text}" "//@repeat " at)
        if(at EQUAL -1)
            break()
        endif()
        string(SUBSTRING "${text}" 0 ${at} before)
        string(SUBSTRING "${text}" ${at} -1 text)
        string(REGEX MATCH "^//@repeat ([A-Z]+) ([0-9]+)\n" head "${text}")
        set(name ${CMAKE_MATCH_1})
        math(EXPR last "${CMAKE_MATCH_2} - 1")
        set(tail "//@end ${name}\n")
        string(FIND "${text}" "${tail}" end)
        if(end EQUAL -1)
            message(FATAL_ERROR "no end of ${head}")
        endif()
        string(LENGTH "${head}" begin)
        string(LENGTH "${tail}" behind)
        math(EXPR behind "${behind} + ${end}")
        math(EXPR length "${end} - ${begin}")
        string(SUBSTRING "${text}" ${begin} ${length} block)
        string(SUBSTRING "${text}" ${behind} -1 text)
        set(copies "")
        foreach(i RANGE ${last})
            math(EXPR down "${last} + 1 - ${i}")
            string(REPLACE "@${name}@" "${i}" copy "${block}")
            string(REPLACE "@-${name}@" "${down}" copy "${copy}")
            string(APPEND copies "${copy}")
        endforeach()
        string(APPEND done "${before}")
        set(text "${copies}${text}") # which may contain repeats itself
    endwhile()
    set(${result} "${done}${text}" PARENT_SCOPE)
endfunction()

# read_source(FILE RESULT): without its licence line, which each installed file has once.
set(licence "// SPDX-License-Identifier: Apache-2.0\n")
function(read_source source result)
    file(READ ${SOURCE_DIR}/${source} text)
    string(REPLACE "${licence}" "" text "${text}")
    set(${result} "${text}" PARENT_SCOPE)
endfunction()

function(expand_inserts text result)
    while("${text}" MATCHES "//@insert ([a-z_/.]+)\n")
        set(line "${CMAKE_MATCH_0}")
        read_source(${CMAKE_MATCH_1} inserted)
        string(REPLACE "${line}" "${inserted}" text "${text}")
    endwhile()
    set(${result} "${text}" PARENT_SCOPE)
endfunction()

# expand_include(OUTPUT SOURCE): a file that others include.
function(expand_include output source)
    read_source(${source} text)
    expand_repeats("${text}" text)
    file(WRITE ${OUTPUT_DIR}/${output} "${licence}${text}")
endfunction()

# expand(OUTPUT SOURCE...): one installed file, its modules in the order of the sources.
function(expand output)
    set(content "${licence}// Made from ip/ of OxaUtils at build time.\n`default_nettype none\n")
    foreach(source IN LISTS ARGN)
        read_source(${source} text)
        expand_inserts("${text}" text)
        expand_repeats("${text}" text)
        string(CONFIGURE "${text}" text @ONLY)
        string(REGEX REPLACE "//@unused ([^\n]+)\n"
            "\n`ifdef VERILATOR\nwire unused = &{1'b0, \\1};\n`endif\n" text "${text}")
        string(APPEND content "\n${text}")
    endforeach()
    file(WRITE ${OUTPUT_DIR}/${output} "${content}\n`default_nettype wire\n")
endfunction()

set(lite_top common/sync.v.in common/crc32.v.in common/pick.v.in common/scan.v.in
    common/command.v.in lite/top.v.in)

set(P 0)
expand(OXA_LITE/QX_AO_0/qx_ao_mem_ctrl.v common/buffer.v.in lite/mem_ctrl.v.in)
expand(OXA_LITE/QX_AO_0/qx_ao_top.v ${lite_top})

foreach(P RANGE 15)
    set(core OXA/QX_AO_${P})
    expand(${core}/qx_ao_crc32.v common/crc32.v.in)
    expand(${core}/qx_ao_match.v standard/equal.v.in standard/order.v.in standard/match.v.in
        standard/counter.v.in standard/unit.v.in standard/store.v.in standard/trigger.v.in
        standard/events.v.in)
    expand(${core}/qx_ao_mem_ctrl.v common/buffer.v.in standard/mem_ctrl.v.in)
    expand(${core}/qx_ao_top.v
        common/sync.v.in common/pick.v.in common/scan.v.in common/command.v.in
        standard/top.v.in)
endforeach()
expand_include(OXA/qx_ao_names.v standard/names.v.in)
expand_include(OXA/qx_oxa_names.v common/unknown_names.v)
expand_include(OXA_LITE/qx_oxa_names.v common/unknown_names.v)

# The difference between the three control tops: registers on the way from the cores to the
# primitive. Signals need more than a period of tck on the large dies, the primitive of the smallest
# part samples tdo_er1 half a period early, and a part at the lowest voltage is one period slower.
foreach(mode OXA OXA_LITE)
    set(TDO_STAGES 0)
    set(ZV1_TDO_STAGES 1)
    expand(${mode}/QX_CON/qx_con_top.v control/con_top.v.in)
    set(TDO_STAGES 1)
    set(ZV1_TDO_STAGES 2)
    expand(${mode}/QX_CON/qx_con_top_6k.v control/con_top.v.in)
    set(TDO_STAGES 2)
    set(ZV1_TDO_STAGES 3)
    expand(${mode}/QX_CON/qx_con_top_138.v control/con_top.v.in)
endforeach()
