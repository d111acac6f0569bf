include(CMakePackageConfigHelpers)

# Shared: each layer's library (runtime) and its development files. Static:
# the interface targets and every component archive. Every layer made by
# wq_add_layer_library() is installed.
get_property(layers GLOBAL PROPERTY WQ_LAYERS)
set(install_targets)
foreach(layer IN LISTS layers)
  if(layer STREQUAL "quick" AND BUILD_SHARED_LIBS)
    install(TARGETS wq_quick EXPORT WQGeneralTargets
            LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT quicklib NAMELINK_COMPONENT development)
  else()
    list(APPEND install_targets wq_${layer})
  endif()
  if(NOT BUILD_SHARED_LIBS)
    get_property(components GLOBAL PROPERTY WQ_${layer}_COMPONENTS)
    list(APPEND install_targets wq_${layer}_static ${components})
  endif()
  install(DIRECTORY ${layer}/include/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT development)
endforeach()

install(TARGETS ${install_targets} EXPORT WQGeneralTargets
        ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime NAMELINK_COMPONENT development)
install(EXPORT WQGeneralTargets NAMESPACE WQGeneral::
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/WQGeneral COMPONENT development)

set(WQ_CONFIG_WIDGETS ${WQ_BUILD_WIDGETS})
set(WQ_CONFIG_QUICK ${WQ_HAVE_QUICK})
configure_package_config_file(cmake/WQGeneralConfig.cmake.in
  ${CMAKE_CURRENT_BINARY_DIR}/WQGeneralConfig.cmake
  INSTALL_DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/WQGeneral)
write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/WQGeneralConfigVersion.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/WQGeneralConfig.cmake
              ${CMAKE_CURRENT_BINARY_DIR}/WQGeneralConfigVersion.cmake
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/WQGeneral COMPONENT development)

# Orders components so that each precedes the components it links (a
# depth-first walk over their links, reversed).
function(wq_components_in_link_order out)
  set(all ${ARGN})
  set(done)
  set(order)
  function(wq_visit component)
    if(component IN_LIST done)
      return()
    endif()
    list(APPEND done ${component})
    set(done ${done} PARENT_SCOPE)
    get_target_property(links ${component} LINK_LIBRARIES)
    foreach(link IN LISTS links)
      if(link IN_LIST all)
        wq_visit(${link})
      endif()
    endforeach()
    list(PREPEND order ${component})
    set(done ${done} PARENT_SCOPE)
    set(order ${order} PARENT_SCOPE)
  endfunction()
  foreach(component IN LISTS all)
    wq_visit(${component})
  endforeach()
  set(${out} ${order} PARENT_SCOPE)
endfunction()

# pkg-config files for builds without CMake, relocatable with the prefix.
file(RELATIVE_PATH pc_to_prefix "/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/")
function(wq_pkg_config layer name description requires)
  set(pc_libs "-lWQGeneral${name}")
  set(pc_requires "${requires}")
  # The headers need C++20, as the CMake targets' compile features say.
  set(pc_cflags " -std=c++20")
  if(NOT BUILD_SHARED_LIBS)
    string(TOUPPER ${layer} upper)
    string(APPEND pc_cflags " -DWQ_${upper}_STATIC")
  endif()
  if(NOT BUILD_SHARED_LIBS)
    # Every archive after the ones that use it (pkg-config drops repeated
    # group flags, so the order must do), the toolkit's registration whole.
    get_property(components GLOBAL PROPERTY WQ_${layer}_COMPONENTS)
    wq_components_in_link_order(ordered ${components})
    set(pc_libs "")
    foreach(component IN LISTS ordered)
      get_target_property(archive ${component} OUTPUT_NAME)
      if(component MATCHES "^wq_[a-z]+_toolkit$")
        string(APPEND pc_libs " -Wl,--whole-archive -l${archive} -Wl,--no-whole-archive")
      else()
        string(APPEND pc_libs " -l${archive}")
      endif()
    endforeach()
    string(STRIP "${pc_libs}" pc_libs)
    if(layer STREQUAL "core")
      string(APPEND pc_requires " icu-i18n icu-uc libcrypto")
    endif()
  endif()
  set(pc_name WQGeneral${name})
  set(pc_description "${description}")
  configure_file(${PROJECT_SOURCE_DIR}/cmake/WQGeneral.pc.in ${CMAKE_CURRENT_BINARY_DIR}/${pc_name}.pc @ONLY)
  install(FILES ${CMAKE_CURRENT_BINARY_DIR}/${pc_name}.pc
          DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT development)
endfunction()
wq_pkg_config(core Core "Calendar dates, entry formatters, money, encodings and encrypted documents for finance applications" "Qt6Core")
if(WQ_HAVE_QUICK)
  wq_pkg_config(quick Quick "The formatted field, the pop-up calculator and alert sheets for Qt Quick" "WQGeneralCore Qt6Qml Qt6Quick")
endif()
if(WQ_BUILD_WIDGETS)
  wq_pkg_config(widgets Widgets "Formatted fields, the pop-up calculator and interface helpers for finance applications" "WQGeneralCore Qt6Widgets")
endif()
