# Debian packages, one per install component: cpack -G DEB in the build folder.
set(CPACK_PACKAGE_NAME wqgeneral)
set(CPACK_PACKAGE_VENDOR "WQGeneral developers")
set(CPACK_PACKAGE_CONTACT "WQGeneral developers <wqgeneral@localhost>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "${PROJECT_DESCRIPTION}")
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGING_INSTALL_PREFIX ${CMAKE_INSTALL_PREFIX})
set(CPACK_PACKAGE_DIRECTORY ${CMAKE_BINARY_DIR}/packages)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION libs)
# Library dependencies (Qt, ICU, OpenSSL) are read off the binaries.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
# Our own libraries are found in the build tree; the packages depend on each
# other through the component dependencies below.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_BINARY_DIR}/core ${CMAKE_BINARY_DIR}/widgets
    ${CMAKE_BINARY_DIR}/quick)
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)

set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME libwqgeneral${PROJECT_VERSION_MAJOR})
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libwqgeneral-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "qt6-base-dev, libicu-dev, libssl-dev")
set(CPACK_DEBIAN_TOOL_PACKAGE_NAME wqgeneral-tool)
set(CPACK_DEBIAN_TOOL_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_QUICK_PACKAGE_NAME qml6-module-wqgeneral)
# What the module's QML files import (the libraries are read off the binaries).
set(CPACK_DEBIAN_QUICK_PACKAGE_DEPENDS
    "qml6-module-qtquick, qml6-module-qtquick-controls, qml6-module-qtquick-templates, qml6-module-qtquick-layouts")
set(CPACK_DEBIAN_DESIGNER_PACKAGE_NAME wqgeneral-designer-plugin)
set(CPACK_DEBIAN_DESIGNER_PACKAGE_SECTION devel)

set(CPACK_COMPONENT_RUNTIME_DESCRIPTION "WQGeneral shared libraries and translations")
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION "WQGeneral headers, CMake package and pkg-config files")
set(CPACK_COMPONENT_DEVELOPMENT_DEPENDS runtime)
set(CPACK_COMPONENT_QUICK_DESCRIPTION "WQGeneral for Qt Quick: the QML module WQGeneral and its library")
set(CPACK_COMPONENT_QUICK_DEPENDS runtime)
if(WQ_HAVE_QUICK)
  # The CMake package and pkg-config files name the Qt Quick library too.
  list(APPEND CPACK_COMPONENT_DEVELOPMENT_DEPENDS quick)
  string(APPEND CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS ", qt6-declarative-dev")
endif()
set(CPACK_COMPONENT_TOOL_DESCRIPTION "wq, the WQGeneral command-line tool")
set(CPACK_COMPONENT_DESIGNER_DESCRIPTION "WQGeneral widgets in Qt Designer's widget box")
set(CPACK_COMPONENT_DESIGNER_DEPENDS runtime)
if(BUILD_SHARED_LIBS)
  set(CPACK_COMPONENT_TOOL_DEPENDS runtime)
endif()
include(CPack)
