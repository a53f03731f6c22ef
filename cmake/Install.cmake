# Installs headers, libraries, the CMake package and the pkg-config file.
include(CMakePackageConfigHelpers)

# Only the public API: the parse states, the state pool and the core's model classes stay
# private, free to change. The install test holds the same list.
set(XMLPARSER_PUBLIC_HEADERS
    tokenizer/AttributeMap.h
    tokenizer/XmlParser.h
    cimxml/CIMXMLParser.h
    cimxml/QualifierDecls.h
    populator/LoadReport.h
    populator/NamespacePopulator.h
    mof/MofLoader.h
    core/Core.h
    core/DateTime.h
    core/Interfaces.h
    core/MemoryNamespace.h
    core/Services.h
    core/Status.h
    core/Value.h
)
foreach(header ${XMLPARSER_PUBLIC_HEADERS})
    get_filename_component(dir ${header} DIRECTORY)
    install(FILES ${PROJECT_SOURCE_DIR}/${header}
        DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/xmlparser/${dir})
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
