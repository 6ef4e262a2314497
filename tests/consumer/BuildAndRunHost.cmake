# cmake -DBUILD=... -DHOST=... -DWORK=... [-DTOOLCHAIN=...] [-DEMULATOR=a|b] -P BuildAndRunHost.cmake
# Installs the build in BUILD into WORK/prefix, then configures, builds and
# runs the host project in HOST against that prefix.
function(run)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE status)
  if(NOT status EQUAL 0)
    message(FATAL_ERROR "failed (${status}): ${ARGN}")
  endif()
endfunction()

set(prefix ${WORK}/prefix)
file(REMOVE_RECURSE ${WORK})
run(${CMAKE_COMMAND} --install ${BUILD} --prefix ${prefix})

set(configure -S ${HOST} -B ${WORK}/build -DCMAKE_BUILD_TYPE=Release -DCMAKE_PREFIX_PATH=${prefix})
if(TOOLCHAIN)
  # A cross toolchain looks for packages only below its target root.
  list(APPEND configure -DCMAKE_TOOLCHAIN_FILE=${TOOLCHAIN} -DAurivox_DIR=${prefix}/lib/cmake/Aurivox)
endif()
run(${CMAKE_COMMAND} ${configure})
run(${CMAKE_COMMAND} --build ${WORK}/build)

string(REPLACE "|" ";" emulator "${EMULATOR}")
file(GLOB program ${WORK}/build/host ${WORK}/build/host.exe)
run(${emulator} ${program})
