# Lets clang-tidy read the program's sources. It takes longer for the headers of the standard library than for all of
# a folder, so it reads some folders at a time as one. No two sources of a group may have helpers of the same name in
# their unnamed namespaces.

# lorivan_tidy(GROUP TARGET...): the sources of these, as far as they are built here.
function(lorivan_tidy group)
  set(includes "")
  set(links lorivan_flags)
  foreach(target ${ARGN})
    if(NOT TARGET ${target})
      continue()
    endif()
    list(APPEND links ${target})
    get_target_property(folder ${target} SOURCE_DIR)
    get_target_property(sources ${target} SOURCES)
    list(FILTER sources INCLUDE REGEX "^[a-z_0-9]+[.]cpp$")  # generated ones have a path
    list(TRANSFORM sources REPLACE ".+" "#include \"${folder}/\\0\"\n")
    list(APPEND includes ${sources})
  endforeach()
  list(JOIN includes "" text)
  set(joined ${CMAKE_CURRENT_BINARY_DIR}/tidy/${group}.cpp)
  file(CONFIGURE OUTPUT ${joined} CONTENT "${text}" @ONLY)
  add_library(lorivan_tidy_${group} OBJECT ${joined})
  target_link_libraries(lorivan_tidy_${group} PRIVATE ${links})
  target_compile_definitions(lorivan_tidy_${group} PRIVATE LORIVAN_VERSION="${LORIVAN_VERSION}")
  set_target_properties(lorivan_tidy_${group} PROPERTIES UNITY_BUILD OFF
    CXX_COMPILER_LAUNCHER "${PROJECT_SOURCE_DIR}/cmake/tidy-run;${LORIVAN_CLANG_TIDY}")
endfunction()

# Other versions know other checks.
find_program(LORIVAN_CLANG_TIDY NAMES clang-tidy-14 clang-tidy)
if(LORIVAN_CLANG_TIDY)
  execute_process(COMMAND ${LORIVAN_CLANG_TIDY} --version OUTPUT_VARIABLE tidy_version)
endif()
if(NOT tidy_version MATCHES "version 14[.]")
  message(WARNING "There is no clang-tidy 14; the sources are compiled without it")
  return()
endif()
lorivan_tidy(ground lorivan_system lorivan_base lorivan_platform_common lorivan_platform_none lorivan_graph)
lorivan_tidy(strands lorivan_strands)
lorivan_tidy(model3d lorivan_model3d)
lorivan_tidy(shapes lorivan_custom lorivan_outlines)
lorivan_tidy(export lorivan_export)
lorivan_tidy(design lorivan_design)
lorivan_tidy(window lorivan_controls lorivan_cli lorivan_window lorivan_app)
lorivan_tidy(platform lorivan_platform_qt lorivan_entry lorivan_platform_win32)
