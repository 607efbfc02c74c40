# Installs zentgeo into a directory of its own, builds the samples against it and compares what they print. Each
# installed header is compiled by itself, and a program is linked with the libraries in either order.
set(place ${BUILD}/tests/package/sample)
file(REMOVE_RECURSE ${place})
file(COPY ${SAMPLE}/ DESTINATION ${place}/source)
set(flags "")
if(SANITIZE)
  set(flags "-fsanitize=${SANITIZE}")
endif()

function(run)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE status OUTPUT_VARIABLE printed ERROR_VARIABLE printed)
  if(NOT status EQUAL 0)
    message(FATAL_ERROR "${ARGN}\n${printed}")
  endif()
endfunction()

run(${CMAKE_COMMAND} --install ${BUILD} --component zentgeo --prefix ${place}/installed)
run(${CMAKE_COMMAND} -S ${place}/source -B ${place}/build -G ${GENERATOR} -DCMAKE_CXX_COMPILER=${COMPILER}
  -DCMAKE_PREFIX_PATH=${place}/installed -DCMAKE_CXX_FLAGS=${flags})
run(${CMAKE_COMMAND} --build ${place}/build)
run(${CMAKE_COMMAND} -S ${EXPECTED}/headers -B ${place}/headers -G ${GENERATOR} -DCMAKE_CXX_COMPILER=${COMPILER}
  -DCMAKE_PREFIX_PATH=${place}/installed -DCMAKE_CXX_FLAGS=${flags} -DINCLUDED=${place}/installed/include/zentgeo)
run(${CMAKE_COMMAND} --build ${place}/headers)
run(${place}/headers/host_last)
run(${place}/headers/host_first)
foreach(sample ground parcels raster street terrain)
  execute_process(COMMAND ${place}/build/${sample} WORKING_DIRECTORY ${place}/source
    OUTPUT_FILE ${place}/${sample}.txt RESULT_VARIABLE status)
  if(NOT status EQUAL 0)
    message(FATAL_ERROR "${sample} ended with ${status}")
  endif()
  execute_process(COMMAND diff -u ${EXPECTED}/${sample}.txt ${place}/${sample}.txt RESULT_VARIABLE differs)
  if(NOT differs EQUAL 0)
    message(FATAL_ERROR "${sample} prints something else")
  endif()
endforeach()
