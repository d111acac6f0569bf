# Most of a source's compile time is spent parsing Qt's and the standard
# library's headers. Each group of targets below shares one precompiled
# header, made by a target of its own (so that no target of the group waits
# for another) with the group's flags, and reused by the group; where the
# flags did not match GCC would fall back to the header (-Winvalid-pch says so).
# -DCMAKE_DISABLE_PRECOMPILE_HEADERS=ON turns them off; the linters parse
# without them, so a missing include is still found.

set(WQ_PCH_DIR ${CMAKE_CURRENT_LIST_DIR}/pch)

# wq_precompile_group(<name> <header> LIBS <what the group links> TARGETS ...)
function(wq_precompile_group name header)
  cmake_parse_arguments(ARG "HIDDEN" "" "LIBS;TARGETS" ${ARGN})
  if(NOT ARG_TARGETS)
    return()
  endif()
  set(owner wq_pch_${name})
  set(source ${CMAKE_CURRENT_BINARY_DIR}/${owner}.cpp)
  file(WRITE ${source} "// Makes the precompiled header of its group.\n")
  add_library(${owner} OBJECT ${source})
  target_link_libraries(${owner} PRIVATE ${ARG_LIBS})
  target_compile_options(${owner} PRIVATE ${WQ_WARNINGS})
  if(ARG_HIDDEN AND BUILD_SHARED_LIBS)
    set_target_properties(${owner} PROPERTIES CXX_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN ON)
  endif()
  target_precompile_headers(${owner} PRIVATE ${WQ_PCH_DIR}/${header})
  foreach(target IN LISTS ARG_TARGETS)
    target_precompile_headers(${target} REUSE_FROM ${owner})
  endforeach()
endfunction()

# Called once every target exists.
function(wq_precompile_headers)
  if(CMAKE_DISABLE_PRECOMPILE_HEADERS)
    return()
  endif()
  get_property(core GLOBAL PROPERTY WQ_core_COMPONENTS)
  wq_precompile_group(core wq_core_pch.h HIDDEN LIBS Qt6::Core TARGETS ${core})
  if(TARGET wq_widgets)
    get_property(widgets GLOBAL PROPERTY WQ_widgets_COMPONENTS)
    wq_precompile_group(widgets wq_widgets_pch.h HIDDEN LIBS Qt6::Widgets TARGETS ${widgets})
  endif()
  if(TARGET wq_showcase_parts)
    wq_precompile_group(showcase wq_widgets_pch.h LIBS Qt6::Widgets TARGETS wq_showcase_parts)
  endif()
  if(TARGET wq)
    wq_precompile_group(tool wq_core_pch.h LIBS Qt6::Core TARGETS wq)
  endif()
endfunction()

# Called at the end of tests/: the suites by the main they link, plain or
# with widgets. The makers live there too, since Qt's test module defines
# the folder of the target that uses it.
function(wq_precompile_test_headers)
  if(CMAKE_DISABLE_PRECOMPILE_HEADERS)
    return()
  endif()
  get_property(tests DIRECTORY PROPERTY BUILDSYSTEM_TARGETS)
  set(core_tests)
  set(widget_tests)
  foreach(target IN LISTS tests)
    get_target_property(type ${target} TYPE)
    if(NOT type STREQUAL "EXECUTABLE")
      continue()
    endif()
    get_target_property(libraries ${target} LINK_LIBRARIES)
    if("wq_test_main" IN_LIST libraries)
      list(APPEND core_tests ${target})
    elseif("wq_test_main_gui" IN_LIST libraries)
      list(APPEND widget_tests ${target})
    endif()
  endforeach()
  wq_precompile_group(core_tests wq_tests_pch.h LIBS Qt6::Core GTest::gtest TARGETS ${core_tests})
  wq_precompile_group(widget_tests wq_widget_tests_pch.h LIBS Qt6::Widgets Qt6::Test GTest::gtest
                      TARGETS ${widget_tests})
endfunction()
