# Script run by CTest: install, check that only the public headers are there, configure the
# consumer, build it, run both of its programs.
function(run)
    execute_process(COMMAND ${ARGV} RESULT_VARIABLE rc)
    if(NOT rc EQUAL 0)
        message(FATAL_ERROR "failed (${rc}): ${ARGV}")
    endif()
endfunction()

file(REMOVE_RECURSE ${WORK_DIR})
set(prefix ${WORK_DIR}/prefix)
run(${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${prefix})
file(GLOB_RECURSE installed RELATIVE ${prefix}/${INCLUDE_DIR}/xmlparser
    ${prefix}/${INCLUDE_DIR}/xmlparser/*)
list(SORT installed)
set(expected ${PUBLIC_HEADERS})
list(SORT expected)
if(NOT installed STREQUAL expected)
    message(FATAL_ERROR "installed headers: ${installed}\nexpected: ${expected}")
endif()
run(${CMAKE_COMMAND} -S ${CONSUMER_DIR} -B ${WORK_DIR}/build
    -DCMAKE_CXX_COMPILER=${CXX} -DCMAKE_CXX_FLAGS=${CXX_FLAGS}
    -DCMAKE_PREFIX_PATH=${prefix} -DCMAKE_FIND_USE_PACKAGE_REGISTRY=OFF)
run(${CMAKE_COMMAND} --build ${WORK_DIR}/build)
run(${WORK_DIR}/build/consumer_cmake)
run(${WORK_DIR}/build/consumer_pkgconfig)
