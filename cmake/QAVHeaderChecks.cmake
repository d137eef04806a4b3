# qav_add_header_checks(<target> <headers...>): compiles every header alone in a
# translation unit of its own, so that each one includes what it needs.
function(qav_add_header_checks target)
  set(checks)
  foreach(header ${ARGN})
    get_filename_component(name ${header} NAME_WE)
    set(check ${CMAKE_BINARY_DIR}/header_checks/${target}/${name}.cpp)
    file(CONFIGURE OUTPUT ${check} CONTENT "#include \"${name}.h\"\n")
    list(APPEND checks ${check})
  endforeach()
  add_library(${target}HeaderChecks OBJECT ${checks})
  target_link_libraries(${target}HeaderChecks PRIVATE ${target})
endfunction()
