# What a host needs: the shared libraries, their public headers, one CMake package, one pkg-config file per library.
include(CMakePackageConfigHelpers)

get_property(libraries GLOBAL PROPERTY QEL_SHARED_LIBRARIES)
set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/qelprop4)

install(TARGETS ${libraries} EXPORT qelprop4
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
    FILE_SET HEADERS DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(EXPORT qelprop4 NAMESPACE qelprop4:: FILE qelprop4Targets.cmake DESTINATION ${package_dir})

configure_package_config_file(${CMAKE_CURRENT_LIST_DIR}/qelprop4Config.cmake.in
    ${PROJECT_BINARY_DIR}/qelprop4Config.cmake INSTALL_DESTINATION ${package_dir})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/qelprop4ConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/qelprop4Config.cmake ${PROJECT_BINARY_DIR}/qelprop4ConfigVersion.cmake
    DESTINATION ${package_dir})

file(RELATIVE_PATH PC_PREFIX /${CMAKE_INSTALL_LIBDIR}/pkgconfig /.)
foreach(library IN LISTS libraries)
    get_target_property(PC_DESCRIPTION ${library} QEL_DESCRIPTION)
    get_target_property(uses ${library} QEL_USES)
    string(REPLACE ";" " " PC_REQUIRES "${uses}")
    set(PC_NAME ${library})
    configure_file(${CMAKE_CURRENT_LIST_DIR}/library.pc.in ${PROJECT_BINARY_DIR}/${library}.pc @ONLY)
    install(FILES ${PROJECT_BINARY_DIR}/${library}.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
endforeach()

# The pages that the man page of the program names.
install(FILES ${PROJECT_SOURCE_DIR}/README.md DESTINATION ${CMAKE_INSTALL_DOCDIR})
install(DIRECTORY ${PROJECT_SOURCE_DIR}/docs DESTINATION ${CMAKE_INSTALL_DOCDIR} FILES_MATCHING PATTERN "*.md"
    PATTERN gen EXCLUDE)
