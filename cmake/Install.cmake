# Installs headers, libraries, the CMake package and the pkg-config file.
include(CMakePackageConfigHelpers)

foreach(dir tokenizer cimxml cimxml/states populator core)
    install(DIRECTORY ${PROJECT_SOURCE_DIR}/${dir}/
        DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/xmlparser/${dir}
        FILES_MATCHING PATTERN "*.h")
endforeach()

install(TARGETS xmlparser qrncore EXPORT xmlparserTargets
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})

set(XMLPARSER_CMAKE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/xmlparser)
install(EXPORT xmlparserTargets NAMESPACE xmlparser:: DESTINATION ${XMLPARSER_CMAKE_DIR})
configure_package_config_file(${CMAKE_CURRENT_LIST_DIR}/xmlparserConfig.cmake.in
    ${PROJECT_BINARY_DIR}/xmlparserConfig.cmake INSTALL_DESTINATION ${XMLPARSER_CMAKE_DIR})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/xmlparserConfigVersion.cmake
    COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/xmlparserConfig.cmake
    ${PROJECT_BINARY_DIR}/xmlparserConfigVersion.cmake DESTINATION ${XMLPARSER_CMAKE_DIR})

# The pkg-config file finds its prefix from its own folder, so the install stays relocatable.
file(RELATIVE_PATH XMLPARSER_PC_TO_PREFIX /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
configure_file(${CMAKE_CURRENT_LIST_DIR}/xmlparser.pc.in ${PROJECT_BINARY_DIR}/xmlparser.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/xmlparser.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
