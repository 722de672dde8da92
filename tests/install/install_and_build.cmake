function(run)
    execute_process(COMMAND ${ARGV} RESULT_VARIABLE result OUTPUT_VARIABLE text ERROR_VARIABLE text)
    if(NOT result EQUAL 0)
        message(FATAL_ERROR "${ARGV}\nended with ${result}:\n${text}")
    endif()
endfunction()

file(REMOVE_RECURSE ${WORK})
run(${CMAKE_COMMAND} --install ${BUILD} --prefix ${WORK}/first)
# Moved, so that nothing in the package may know where it was installed.
file(RENAME ${WORK}/first ${WORK}/prefix)
run(${CMAKE_COMMAND} -S ${HOST} -B ${WORK}/host -G ${GENERATOR}
    -DCMAKE_PREFIX_PATH=${WORK}/prefix
    -DCMAKE_CXX_COMPILER=${CXX}
    -DCMAKE_CXX_FLAGS=${CXX_FLAGS})
run(${CMAKE_COMMAND} --build ${WORK}/host)
run(${WORK}/host/host_with_own_platform ${WORK}/generated)
run(${WORK}/host/host_with_our_platform)
run(${WORK}/prefix/bin/oxa --version)
