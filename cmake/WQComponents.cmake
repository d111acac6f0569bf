# Each subsystem folder of core/, widgets/ and quick/ is one static component
# library. WQGeneral::Core, WQGeneral::Widgets and WQGeneral::Quick gather
# them, so an application links one name while a subsystem's tests build only
# what that subsystem needs.

set(WQ_WARNINGS -Wall -Wextra -Wpedantic)
# Merged into one unit, a source counts as a header to GCC, which then warns
# of every test fixture in an anonymous namespace; built file by file it is
# correct as written.
if(CMAKE_UNITY_BUILD AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  list(APPEND WQ_WARNINGS -Wno-subobject-linkage)
endif()
if(WQ_SANITIZE)
  set(WQ_SANITIZER_FLAGS -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_compile_options(${WQ_SANITIZER_FLAGS})
  add_link_options(${WQ_SANITIZER_FLAGS})
endif()
# Rounding and money arithmetic must be plain IEEE doubles.
add_compile_options(-ffp-contract=off -fno-fast-math)

include(GenerateExportHeader)

# wq_add_export_header(<layer> <ExportName>) writes <WQGeneral/WQ<ExportName>Export.h>
# with WQ_<LAYER>_EXPORT for the layer's public classes and functions. Call it
# before the layer's components: they are compiled as parts of the library.
function(wq_add_export_header layer export_name)
  string(TOUPPER ${layer} upper)
  set(anchor wq_${layer}_export_anchor)
  add_library(${anchor} OBJECT EXCLUDE_FROM_ALL ${PROJECT_SOURCE_DIR}/cmake/wq_export_anchor.cpp)
  set_target_properties(${anchor} PROPERTIES DEFINE_SYMBOL WQ_${upper}_BUILDING)
  generate_export_header(${anchor}
    BASE_NAME WQ_${upper}
    EXPORT_MACRO_NAME WQ_${upper}_EXPORT
    NO_EXPORT_MACRO_NAME WQ_${upper}_NO_EXPORT
    DEPRECATED_MACRO_NAME WQ_${upper}_DEPRECATED
    STATIC_DEFINE WQ_${upper}_STATIC
    EXPORT_FILE_NAME ${PROJECT_BINARY_DIR}/${layer}/include/WQGeneral/WQ${export_name}Export.h)
  install(FILES ${PROJECT_BINARY_DIR}/${layer}/include/WQGeneral/WQ${export_name}Export.h
          DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/WQGeneral COMPONENT development)
endfunction()

# wq_moc_if_declared(<target> <sources>...) turns moc on for target only when
# one of the sources declares a QObject class or gadget: for the rest it would
# be a scan and a compile for nothing. The sources become configure inputs, so
# that a class added later is seen. Generated sources (compiled resources) are
# made after configuring and declare none.
function(wq_moc_if_declared target)
  set(declares_objects OFF)
  foreach(source IN LISTS ARGN)
    get_filename_component(source ${source} ABSOLUTE BASE_DIR ${CMAKE_CURRENT_SOURCE_DIR})
    string(FIND ${source} ${PROJECT_BINARY_DIR}/ generated)
    if(generated EQUAL 0 OR NOT EXISTS ${source})
      continue()
    endif()
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${source})
    file(STRINGS ${source} objects REGEX "Q_OBJECT|Q_GADGET|Q_NAMESPACE")
    if(objects)
      set(declares_objects ON)
    endif()
  endforeach()
  set_target_properties(${target} PROPERTIES AUTOMOC ${declares_objects})
endfunction()

# wq_add_component(<layer> <name> SOURCES ... [DEPS other components or targets])
# makes target wq_<layer>_<name>, exported as WQGeneral::<layer>_<name>.
function(wq_add_component layer name)
  cmake_parse_arguments(ARG "" "" "SOURCES;DEPS" ${ARGN})
  set(target wq_${layer}_${name})
  add_library(${target} STATIC ${ARG_SOURCES})
  add_library(WQGeneral::${layer}_${name} ALIAS ${target})
  set_target_properties(${target} PROPERTIES
    OUTPUT_NAME WQGeneral_${layer}_${name}
    EXPORT_NAME ${layer}_${name})
  # The headers beside the sources are moc's too.
  file(GLOB beside CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.h)
  wq_moc_if_declared(${target} ${ARG_SOURCES} ${beside})
  target_compile_options(${target} PRIVATE ${WQ_WARNINGS})
  # The public headers need C++20: so does whatever includes them.
  target_compile_features(${target} PUBLIC cxx_std_20)
  string(TOUPPER ${layer} upper)
  target_compile_definitions(${target} PRIVATE WQ_${upper}_BUILDING)
  if(NOT BUILD_SHARED_LIBS)
    target_compile_definitions(${target} PUBLIC WQ_${upper}_STATIC)
  endif()
  target_include_directories(${target} PUBLIC
    $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/${layer}/include>
    $<BUILD_INTERFACE:${PROJECT_BINARY_DIR}/${layer}/include>
    $<INSTALL_INTERFACE:include>)
  # Headers that are not public: "detail/..." from the layer's folder.
  target_include_directories(${target} PRIVATE ${CMAKE_CURRENT_SOURCE_DIR} ${PROJECT_SOURCE_DIR}/${layer})
  if(layer STREQUAL "core")
    target_link_libraries(${target} PUBLIC Qt6::Core)
    target_link_libraries(${target} PRIVATE ICU::i18n ICU::uc ICU::data OpenSSL::Crypto)
  elseif(layer STREQUAL "quick")
    target_link_libraries(${target} PUBLIC Qt6::Core Qt6::Gui Qt6::Qml Qt6::Quick)
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

# Adds every subfolder of the current folder that has a CMakeLists.txt, but
# those named after EXCEPT.
function(wq_add_subsystem_folders)
  cmake_parse_arguments(ARG "" "" "EXCEPT" ${ARGN})
  file(GLOB entries LIST_DIRECTORIES true ${CMAKE_CURRENT_SOURCE_DIR}/*)
  list(SORT entries)
  foreach(entry IN LISTS entries)
    get_filename_component(name ${entry} NAME)
    if(IS_DIRECTORY ${entry} AND EXISTS ${entry}/CMakeLists.txt AND NOT name IN_LIST ARG_EXCEPT)
      add_subdirectory(${entry})
    endif()
  endforeach()
endfunction()

# wq_add_layer_library(<layer> <ExportName> PUBLIC_DEPS ... PRIVATE_DEPS ...
#                      [LAYER_DEPS other layers] [WHOLE component])
# makes wq_<layer>_static, every static component of the layer (the WHOLE one
# linked whole, since nothing calls into it by name), and wq_<layer>, exported
# as WQGeneral::<ExportName>: with BUILD_SHARED_LIBS one shared library
# (libWQGeneral<ExportName>.so.<major>) made of the same objects, otherwise
# the static set. Tests link the static set in either case, so no test
# carries a second copy of a component beside the shared library.
function(wq_add_layer_library layer export_name)
  cmake_parse_arguments(ARG "" "WHOLE" "PUBLIC_DEPS;PRIVATE_DEPS;LAYER_DEPS" ${ARGN})
  set(target wq_${layer})
  get_property(components GLOBAL PROPERTY WQ_${layer}_COMPONENTS)

  add_library(${target}_static INTERFACE)
  set_target_properties(${target}_static PROPERTIES EXPORT_NAME ${layer}_static)
  set(static_components ${components})
  if(ARG_WHOLE)
    list(REMOVE_ITEM static_components ${ARG_WHOLE})
    string(REPLACE "wq_${layer}_" "WQGeneral::${layer}_" exported_whole ${ARG_WHOLE})
    target_link_libraries(${target}_static INTERFACE
      "$<BUILD_INTERFACE:$<LINK_LIBRARY:WHOLE_ARCHIVE,${ARG_WHOLE}>>"
      "$<INSTALL_INTERFACE:$<LINK_LIBRARY:WHOLE_ARCHIVE,${exported_whole}>>")
  endif()
  foreach(dep IN LISTS ARG_LAYER_DEPS)
    target_link_libraries(${target}_static INTERFACE wq_${dep}_static)
  endforeach()
  target_link_libraries(${target}_static INTERFACE ${ARG_PUBLIC_DEPS} ${static_components})

  if(BUILD_SHARED_LIBS)
    set(anchor ${CMAKE_CURRENT_BINARY_DIR}/wq_${layer}_library.cpp)
    file(WRITE ${anchor} "// The library is made of its components' objects.\n")
    set(objects)
    get_property(object_libraries GLOBAL PROPERTY WQ_${layer}_OBJECT_LIBRARIES)
    foreach(component IN LISTS components object_libraries)
      list(APPEND objects $<TARGET_OBJECTS:${component}>)
    endforeach()
    # Only what the public headers mark with the export macro leaves the
    # library; everything else can change without breaking applications.
    set_target_properties(${components} ${object_libraries} PROPERTIES
      CXX_VISIBILITY_PRESET hidden
      VISIBILITY_INLINES_HIDDEN ON)
    add_library(${target} SHARED ${anchor} ${objects})
    set_target_properties(${target} PROPERTIES
      OUTPUT_NAME WQGeneral${export_name}
      VERSION ${PROJECT_VERSION}
      SOVERSION ${PROJECT_VERSION_MAJOR}
      CXX_VISIBILITY_PRESET hidden
      VISIBILITY_INLINES_HIDDEN ON
      # The layers below are installed beside it: found wherever the prefix is.
      INSTALL_RPATH "$ORIGIN")
    target_compile_features(${target} PUBLIC cxx_std_20)
    target_include_directories(${target} PUBLIC
      $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/${layer}/include>
      $<BUILD_INTERFACE:${PROJECT_BINARY_DIR}/${layer}/include>
      $<INSTALL_INTERFACE:include>)
    foreach(dep IN LISTS ARG_LAYER_DEPS)
      target_link_libraries(${target} PUBLIC wq_${dep})
    endforeach()
    target_link_libraries(${target} PUBLIC ${ARG_PUBLIC_DEPS} PRIVATE ${ARG_PRIVATE_DEPS})
  else()
    add_library(${target} INTERFACE)
    target_link_libraries(${target} INTERFACE ${target}_static)
  endif()
  add_library(WQGeneral::${export_name} ALIAS ${target})
  set_target_properties(${target} PROPERTIES EXPORT_NAME ${export_name})
  set_property(GLOBAL APPEND PROPERTY WQ_LAYERS ${layer})
endfunction()
