# Debian packages, one per install component: cpack -G DEB in the build folder.
# scripts/package-check.sh builds them and runs lintian on them.
set(CPACK_PACKAGE_NAME wqgeneral)
set(CPACK_PACKAGE_VENDOR "The WQGeneral developers")
set(CPACK_PACKAGE_CONTACT "The WQGeneral developers <wqgeneral@example.org>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "${PROJECT_DESCRIPTION}")
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGING_INSTALL_PREFIX ${CMAKE_INSTALL_PREFIX})
set(CPACK_PACKAGE_DIRECTORY ${CMAKE_BINARY_DIR}/packages)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
# Binaries as Debian ships them: without their debugging information.
set(CPACK_STRIP_FILES ON)
# Library dependencies (Qt, ICU, OpenSSL) are read off the binaries.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
# Our own libraries are found in the build tree; the packages depend on each
# other through the component dependencies below.
get_property(wq_layers GLOBAL PROPERTY WQ_LAYERS)
list(TRANSFORM wq_layers PREPEND ${CMAKE_BINARY_DIR}/ OUTPUT_VARIABLE CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS)
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)

# Debian's own files for every package, made once here: the machine-readable
# copyright (the repository's .reuse/dep5 with the licence's text as its
# stand-alone paragraph) and the changelog of a native package, compressed as
# Debian wants it. The date honours SOURCE_DATE_EPOCH.
file(READ ${PROJECT_SOURCE_DIR}/.reuse/dep5 wq_copyright)
file(READ ${PROJECT_SOURCE_DIR}/LICENSE wq_licence)
string(REGEX REPLACE "^[^\n]*\n\n[^\n]*\n\n" "" wq_licence "${wq_licence}")  # the title and copyright lines
string(REGEX REPLACE "\n+$" "" wq_licence "${wq_licence}")
string(REPLACE "\n" "\n " wq_licence " ${wq_licence}")
string(REPLACE "\n \n" "\n .\n" wq_licence "${wq_licence}")
string(REGEX MATCH "License: [^\n]+" wq_licence_name "${wq_copyright}")
set(wq_debian_dir ${CMAKE_BINARY_DIR}/debian)
file(WRITE ${wq_debian_dir}/copyright "${wq_copyright}\n${wq_licence_name}\n${wq_licence}\n")
string(TIMESTAMP wq_changelog_date "%a, %d %b %Y %H:%M:%S +0000" UTC)
# Shared libraries register with the dynamic linker through dpkg's trigger,
# not through scripts that call ldconfig.
file(WRITE ${wq_debian_dir}/triggers "activate-noawait ldconfig\n")

get_cmake_property(wq_install_components COMPONENTS)

# wq_debian_package(<component> <package> SECTION <section> SUMMARY <text>
#                   [DEPENDS <components>] [EXTRA_DEPENDS <packages>] [LIBRARIES])
# names the Debian package of an install component and gives it its copyright,
# changelog and lintian overrides (cmake/debian/<component>.lintian-overrides.in,
# each with its reason). LIBRARIES: the package holds shared libraries.
function(wq_debian_package component package)
  cmake_parse_arguments(ARG "LIBRARIES" "SECTION;SUMMARY" "DEPENDS;EXTRA_DEPENDS" ${ARGN})
  string(TOUPPER ${component} upper)
  set(CPACK_DEBIAN_${upper}_PACKAGE_NAME ${package} PARENT_SCOPE)
  set(CPACK_DEBIAN_${upper}_PACKAGE_SECTION ${ARG_SECTION} PARENT_SCOPE)
  set(CPACK_COMPONENT_${upper}_DESCRIPTION "${ARG_SUMMARY}" PARENT_SCOPE)
  set(CPACK_COMPONENT_${upper}_DEPENDS ${ARG_DEPENDS} PARENT_SCOPE)
  if(ARG_EXTRA_DEPENDS)
    string(JOIN ", " depends ${ARG_EXTRA_DEPENDS})
    set(CPACK_DEBIAN_${upper}_PACKAGE_DEPENDS "${depends}" PARENT_SCOPE)
  endif()
  if(ARG_LIBRARIES)
    # CPack writes postinst and postrm scripts that call ldconfig unless the
    # package names its own: naming ones that do not exist leaves them out.
    set(CPACK_DEBIAN_${upper}_PACKAGE_CONTROL_EXTRA ${wq_debian_dir}/triggers
        ${wq_debian_dir}/${component}/none/postinst ${wq_debian_dir}/${component}/none/postrm PARENT_SCOPE)
  endif()
  if(NOT component IN_LIST wq_install_components)
    return()  # nothing is built for it (no Designer, say): no package either
  endif()
  set(docs ${wq_debian_dir}/${component})
  configure_file(${PROJECT_SOURCE_DIR}/cmake/debian/changelog.in ${docs}/changelog @ONLY)
  execute_process(COMMAND gzip -9nf ${docs}/changelog RESULT_VARIABLE failed)
  if(failed)
    message(FATAL_ERROR "gzip could not compress ${docs}/changelog")
  endif()
  set(doc_dir ${CMAKE_INSTALL_DATADIR}/doc/${package})
  install(FILES ${wq_debian_dir}/copyright ${docs}/changelog.gz DESTINATION ${doc_dir} COMPONENT ${component})
  set(overrides ${PROJECT_SOURCE_DIR}/cmake/debian/${component}.lintian-overrides.in)
  if(EXISTS ${overrides})
    configure_file(${overrides} ${docs}/${package} @ONLY)
    install(FILES ${docs}/${package} DESTINATION ${CMAKE_INSTALL_DATADIR}/lintian/overrides COMPONENT ${component})
  endif()
endfunction()

wq_debian_package(runtime libwqgeneral${PROJECT_VERSION_MAJOR} LIBRARIES
  SECTION libs SUMMARY "WQGeneral shared libraries and translations")
wq_debian_package(development libwqgeneral-dev DEPENDS runtime
  EXTRA_DEPENDS qt6-base-dev libicu-dev libssl-dev
  SECTION libdevel SUMMARY "WQGeneral headers, CMake package, pkg-config files and Qt help file")
set(tool_depends)
# The Qt Quick library in a package of its own, so that a widgets application
# does not pull in Qt Quick; the QML module (a plugin the engine loads) beside it.
wq_debian_package(quicklib libwqgeneralquick${PROJECT_VERSION_MAJOR} LIBRARIES DEPENDS runtime
  SECTION libs SUMMARY "WQGeneral for Qt Quick: the shared library")
wq_debian_package(quick qml6-module-wqgeneral DEPENDS quicklib
  # What the module's QML files import (the libraries are read off the binaries).
  EXTRA_DEPENDS qml6-module-qtquick qml6-module-qtquick-controls qml6-module-qtquick-templates qml6-module-qtquick-layouts
  SECTION libs SUMMARY "WQGeneral for Qt Quick: the QML module WQGeneral")
if(WQ_HAVE_QUICK)
  # The CMake package and pkg-config files name the Qt Quick library too.
  set(CPACK_COMPONENT_DEVELOPMENT_DEPENDS runtime quicklib)
  string(APPEND CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS ", qt6-declarative-dev")
endif()
if(BUILD_SHARED_LIBS)
  set(tool_depends runtime)
endif()
wq_debian_package(tool wqgeneral-tool DEPENDS ${tool_depends}
  SECTION utils SUMMARY "wq, the WQGeneral command-line tool")
wq_debian_package(designer wqgeneral-designer-plugin DEPENDS runtime
  SECTION devel SUMMARY "WQGeneral widgets in Qt Designer's widget box")
include(CPack)
