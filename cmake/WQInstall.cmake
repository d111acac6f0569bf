include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

get_property(core_components GLOBAL PROPERTY WQ_core_COMPONENTS)
set(install_targets wq_core ${core_components})
if(WQ_BUILD_WIDGETS)
  get_property(widget_components GLOBAL PROPERTY WQ_widgets_COMPONENTS)
  list(APPEND install_targets wq_widgets ${widget_components})
  install(DIRECTORY widgets/include/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
endif()

install(TARGETS ${install_targets} EXPORT WQGeneralTargets
        ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(DIRECTORY core/include/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(EXPORT WQGeneralTargets NAMESPACE WQGeneral::
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/WQGeneral)

set(WQ_CONFIG_WIDGETS ${WQ_BUILD_WIDGETS})
configure_package_config_file(cmake/WQGeneralConfig.cmake.in
  ${CMAKE_CURRENT_BINARY_DIR}/WQGeneralConfig.cmake
  INSTALL_DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/WQGeneral)
write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/WQGeneralConfigVersion.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/WQGeneralConfig.cmake
              ${CMAKE_CURRENT_BINARY_DIR}/WQGeneralConfigVersion.cmake
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/WQGeneral)
