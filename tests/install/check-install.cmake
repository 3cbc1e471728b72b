# Installs the build into a scratch prefix, then configures, builds and runs a consumer project
# against it with find_package, as a user of the installed library would.
file(REMOVE_RECURSE ${WORK_DIR})
execute_process(COMMAND ${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${WORK_DIR}/prefix
                RESULT_VARIABLE rc OUTPUT_QUIET)
if(rc)
    message(FATAL_ERROR "cmake --install failed")
endif()
execute_process(COMMAND ${CMAKE_COMMAND} -S ${SOURCE_DIR} -B ${WORK_DIR}/build -G Ninja
                        -DCMAKE_PREFIX_PATH=${WORK_DIR}/prefix
                        -DCMAKE_CXX_COMPILER=${CXX_COMPILER}
                        "-DCMAKE_CXX_FLAGS=${CXX_FLAGS}"
                        "-DCMAKE_EXE_LINKER_FLAGS=${EXE_LINKER_FLAGS}"
                RESULT_VARIABLE rc)
if(rc)
    message(FATAL_ERROR "configuring the consumer failed")
endif()
execute_process(COMMAND ${CMAKE_COMMAND} --build ${WORK_DIR}/build RESULT_VARIABLE rc)
if(rc)
    message(FATAL_ERROR "building the consumer failed")
endif()
file(GLOB libdirs ${WORK_DIR}/prefix/lib*)
string(REPLACE ";" ":" libpath "${libdirs}")
execute_process(COMMAND ${CMAKE_COMMAND} -E env LD_LIBRARY_PATH=${libpath}
                        ${WORK_DIR}/build/consumer RESULT_VARIABLE rc)
if(rc)
    message(FATAL_ERROR "the consumer failed: ${rc}")
endif()
