# What programs use the library by: a CMake package for the build and the install tree, a pkg-config
# file, and a pair of Debian packages.
include(CMakePackageConfigHelpers)

set(varoPackageDir ${CMAKE_INSTALL_LIBDIR}/cmake/varo)
configure_package_config_file(cmake/varoConfig.cmake.in varoConfig.cmake
    INSTALL_DESTINATION ${varoPackageDir}
    NO_SET_AND_CHECK_MACRO)
write_basic_package_version_file(varoConfigVersion.cmake COMPATIBILITY SameMinorVersion)
export(TARGETS varo NAMESPACE varo:: FILE varoTargets.cmake)

if(NOT VARO_INSTALL)
    return()
endif()

# varo.pc finds the tree from its own place, unless the tree has no one place.
set(pkgConfigDir ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
if(IS_ABSOLUTE "${CMAKE_INSTALL_LIBDIR}")
    set(pcPrefix ${CMAKE_INSTALL_PREFIX})
    set(pcLibraries ${CMAKE_INSTALL_LIBDIR})
else()
    cmake_path(RELATIVE_PATH CMAKE_INSTALL_PREFIX
        BASE_DIRECTORY ${CMAKE_INSTALL_PREFIX}/${pkgConfigDir} OUTPUT_VARIABLE upwards)
    set(pcPrefix "\${pcfiledir}/${upwards}")
    set(pcLibraries "\${prefix}/${CMAKE_INSTALL_LIBDIR}")
endif()
if(IS_ABSOLUTE "${CMAKE_INSTALL_INCLUDEDIR}")
    set(pcHeaders ${CMAKE_INSTALL_INCLUDEDIR})
else()
    set(pcHeaders "\${prefix}/${CMAKE_INSTALL_INCLUDEDIR}")
endif()
set(pcDefinitions "")
if(VARO_GLIBCXX_DEBUG)
    set(pcDefinitions " -D_GLIBCXX_DEBUG -DVARO_GLIBCXX_DEBUG")
endif()
configure_file(cmake/varo.pc.in varo.pc @ONLY)

install(TARGETS varo EXPORT varoTargets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
        COMPONENT runtime NAMELINK_COMPONENT development)
# Not a file set: this CMake's packages lead to a wrong place when its directory is absolute.
install(DIRECTORY include/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT development)
install(EXPORT varoTargets NAMESPACE varo:: DESTINATION ${varoPackageDir} COMPONENT development)
install(FILES
    ${CMAKE_CURRENT_BINARY_DIR}/varoConfig.cmake
    ${CMAKE_CURRENT_BINARY_DIR}/varoConfigVersion.cmake
    DESTINATION ${varoPackageDir} COMPONENT development)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/varo.pc
    DESTINATION ${pkgConfigDir} COMPONENT development)

if(NOT PROJECT_IS_TOP_LEVEL)
    return()
endif()
set(series ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR})
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_VENDOR "the varo developers")
set(CPACK_PACKAGE_CONTACT "The varo developers <varo@localhost>")
set(CPACK_COMPONENTS_ALL runtime development)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME libvaro${series})
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libvaro-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS
    "libvaro${series} (= ${PROJECT_VERSION}), libstdc++-12-dev | libstdc++-dev")
set(CPACK_COMPONENT_RUNTIME_DESCRIPTION
    "command-line parsing library, shared library\n Declares options, actions and modifiers, parses arguments, writes help.")
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION
    "command-line parsing library, headers\n What programs that use libvaro are compiled with.")
include(CPack)
