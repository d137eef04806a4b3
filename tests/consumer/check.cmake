# Installs the build tree into a scratch prefix, then configures, builds and runs
# a small consumer project against it with find_package(QAVRbaUI); the consumer
# project also compiles the library's own sources against the installed API.
file(REMOVE_RECURSE ${WORK_DIR})
execute_process(COMMAND ${CMAKE_COMMAND} --install ${BINARY_DIR} --prefix ${WORK_DIR}/prefix
                RESULT_VARIABLE rc OUTPUT_QUIET)
if(rc)
  message(FATAL_ERROR "install failed: ${rc}")
endif()
# What only the substitute has is not installed with the host's API.
file(GLOB_RECURSE leaked ${WORK_DIR}/prefix/include/QAVHostDriver.h ${WORK_DIR}/prefix/include/QAVHostJournal.h
     ${WORK_DIR}/prefix/include/QAVStoreFormat.h)
if(leaked)
  message(FATAL_ERROR "driver or internal headers installed: ${leaked}")
endif()
execute_process(COMMAND ${CMAKE_COMMAND} -S ${SOURCE_DIR}/tests/consumer -B ${WORK_DIR}/build
                        -DCMAKE_PREFIX_PATH=${WORK_DIR}/prefix -DCMAKE_CXX_COMPILER=${CXX_COMPILER}
                        -DQAVRBAUI_SOURCE_DIR=${SOURCE_DIR}/RenderingBaseUI/QAVRbaUI.m/src
                RESULT_VARIABLE rc)
if(rc)
  message(FATAL_ERROR "consumer configure failed: ${rc}")
endif()
execute_process(COMMAND ${CMAKE_COMMAND} --build ${WORK_DIR}/build RESULT_VARIABLE rc)
if(rc)
  message(FATAL_ERROR "consumer build failed: ${rc}")
endif()
execute_process(COMMAND ${WORK_DIR}/build/consumer RESULT_VARIABLE rc OUTPUT_VARIABLE out)
message(STATUS "consumer said: ${out}")
if(rc OR NOT out MATCHES "QAVRbaUIEventsAMBIENCE_CHANGEDEvt")
  message(FATAL_ERROR "consumer run failed: ${rc}")
endif()
