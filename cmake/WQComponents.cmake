# Each subsystem folder of core/ and widgets/ is one static component library.
# WQGeneral::Core and WQGeneral::Widgets gather them, so an application links
# one name while a subsystem's tests build only what that subsystem needs.

set(WQ_WARNINGS -Wall -Wextra -Wpedantic)
if(WQ_SANITIZE)
  set(WQ_SANITIZER_FLAGS -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_compile_options(${WQ_SANITIZER_FLAGS})
  add_link_options(${WQ_SANITIZER_FLAGS})
endif()
# Rounding and money arithmetic must be plain IEEE doubles.
add_compile_options(-ffp-contract=off -fno-fast-math)

# wq_add_component(<layer> <name> SOURCES ... [DEPS other components or targets])
# makes target wq_<layer>_<name>, exported as WQGeneral::<layer>_<name>.
function(wq_add_component layer name)
  cmake_parse_arguments(ARG "" "" "SOURCES;DEPS" ${ARGN})
  set(target wq_${layer}_${name})
  add_library(${target} STATIC ${ARG_SOURCES})
  add_library(WQGeneral::${layer}_${name} ALIAS ${target})
  set_target_properties(${target} PROPERTIES
    OUTPUT_NAME WQGeneral_${layer}_${name}
    EXPORT_NAME ${layer}_${name}
    AUTOMOC ON)
  target_compile_options(${target} PRIVATE ${WQ_WARNINGS})
  target_include_directories(${target} PUBLIC
    $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/${layer}/include>
    $<INSTALL_INTERFACE:include>)
  # Headers that are not public: "detail/..." from the layer's folder.
  target_include_directories(${target} PRIVATE ${CMAKE_CURRENT_SOURCE_DIR} ${PROJECT_SOURCE_DIR}/${layer})
  if(layer STREQUAL "core")
    target_link_libraries(${target} PUBLIC Qt6::Core)
    target_link_libraries(${target} PRIVATE ICU::i18n ICU::uc ICU::data OpenSSL::Crypto)
  else()
    target_link_libraries(${target} PUBLIC Qt6::Core Qt6::Gui Qt6::Widgets)
  endif()
  foreach(dep IN LISTS ARG_DEPS)
    if(TARGET wq_${dep} OR NOT TARGET ${dep})
      target_link_libraries(${target} PUBLIC wq_${dep})
    else()
      target_link_libraries(${target} PUBLIC ${dep})
    endif()
  endforeach()
  set_property(GLOBAL APPEND PROPERTY WQ_${layer}_COMPONENTS ${target})
endfunction()

# Adds every subfolder of the current folder that has a CMakeLists.txt.
function(wq_add_subsystem_folders)
  file(GLOB entries LIST_DIRECTORIES true ${CMAKE_CURRENT_SOURCE_DIR}/*)
  list(SORT entries)
  foreach(entry IN LISTS entries)
    if(IS_DIRECTORY ${entry} AND EXISTS ${entry}/CMakeLists.txt)
      add_subdirectory(${entry})
    endif()
  endforeach()
endfunction()
