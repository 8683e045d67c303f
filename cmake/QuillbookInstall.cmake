# What `cmake --install` puts in place: libraries with their headers, the CMake package, the command line, and the
# configuration that an installation brings.
include(CMakePackageConfigHelpers)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/Quillbook)

get_property(libraries GLOBAL PROPERTY QUILLBOOK_LIBRARIES)
install(TARGETS ${libraries} qbliteobjects2_shared EXPORT QuillbookTargets
        ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(EXPORT QuillbookTargets NAMESPACE Quillbook:: DESTINATION ${package_dir})
install(DIRECTORY include/quillbook DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(DIRECTORY configuration DESTINATION ${CMAKE_INSTALL_DATADIR}/quillbook)
if(TARGET quillbook)
  install(TARGETS quillbook RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
endif()

configure_package_config_file(cmake/QuillbookConfig.cmake.in QuillbookConfig.cmake INSTALL_DESTINATION ${package_dir})
write_basic_package_version_file(QuillbookConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/QuillbookConfig.cmake ${CMAKE_CURRENT_BINARY_DIR}/QuillbookConfigVersion.cmake
        DESTINATION ${package_dir})
