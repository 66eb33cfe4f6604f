# Installs the tool, the libraries, their headers and a CMake package, so that an application
# can find_package(TrellinReports) and link TrellinReports::trellin.
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

set(trellin_libraries
  trellin_runtime trellin_hostapi trellin_sql trellin_data trellin_demo trellin_engine trellin_script trellin_render
  trellin_host trellin_run trellin_business trellin_core trellin_layouts trellin_reports
  trellin_reports_ledger trellin_reports_receivables trellin_reports_stock trellin_reports_assets
  trellin_reports_jobs trellin_reports_admin)

# One target for applications: everything a report run needs.
add_library(trellin_all INTERFACE)
set_target_properties(trellin_all PROPERTIES EXPORT_NAME trellin)
target_link_libraries(trellin_all INTERFACE trellin_run trellin_reports trellin_core)
if(TRELLIN_SANITIZE)
  target_link_options(trellin_all INTERFACE -fsanitize=address,undefined)
endif()
target_include_directories(trellin_layouts PUBLIC $<INSTALL_INTERFACE:include/trellin>)

install(TARGETS ${trellin_libraries} trellin_all EXPORT TrellinReportsTargets
        ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
        INCLUDES DESTINATION include/trellin)
install(DIRECTORY platform core reports DESTINATION include/trellin
        FILES_MATCHING PATTERN "*.h")
install(FILES layouts/EmbeddedLayouts.h DESTINATION include/trellin/layouts)
install(EXPORT TrellinReportsTargets NAMESPACE TrellinReports::
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/TrellinReports)
configure_package_config_file(${CMAKE_CURRENT_LIST_DIR}/TrellinReportsConfig.cmake.in
  ${CMAKE_BINARY_DIR}/TrellinReportsConfig.cmake
  INSTALL_DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/TrellinReports)
write_basic_package_version_file(${CMAKE_BINARY_DIR}/TrellinReportsConfigVersion.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES ${CMAKE_BINARY_DIR}/TrellinReportsConfig.cmake
              ${CMAKE_BINARY_DIR}/TrellinReportsConfigVersion.cmake
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/TrellinReports)
