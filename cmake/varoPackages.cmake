# How programs find the library: a CMake package for the build and the install tree, a pkg-config file,
# and a pair of Debian packages.
include(CMakePackageConfigHelpers)

set(varoPackageDir ${CMAKE_INSTALL_LIBDIR}/cmake/varo)
configure_package_config_file(cmake/varoConfig.cmake.in varoConfig.cmake
    INSTALL_DESTINATION ${varoPackageDir}
    NO_SET_AND_CHECK_MACRO)
write_basic_package_version_file(varoConfigVersion.cmake COMPATIBILITY SameMinorVersion)
export(TARGETS varo NAMESPACE varo:: FILE varoTargets.cmake)
configure_file(cmake/varoManual.cmake varoManual.cmake COPYONLY)
include(cmake/varoManual.cmake)

# A program of a host that contains this project needs the library wherever it is installed.
install(TARGETS varo EXPORT varoTargets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime NAMELINK_SKIP)
if(NOT VARO_INSTALL)
    return()
endif()

# varo.pc finds the tree relative to itself, unless parts of the tree are elsewhere.
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
# -isystem keeps a host's warnings out of our headers. It must not name directories that the compiler
# searches anyway, which would then come too early; only the installation knows its prefix.
set(pcInclude "@pcInclude@")
configure_file(cmake/varo.pc.in varo.pc.in @ONLY)
install(CODE "
    set(pcInclude \"-isystem \")
    if(CMAKE_INSTALL_PREFIX MATCHES \"^/usr(/local)?/?$\")
        set(pcInclude -I)
    endif()
    configure_file(\"${CMAKE_CURRENT_BINARY_DIR}/varo.pc.in\"
        \"${CMAKE_CURRENT_BINARY_DIR}/varo.pc\" @ONLY)"
    COMPONENT development)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/varo.pc
    DESTINATION ${pkgConfigDir} COMPONENT development)

# What -lvaro finds is a script for the linker, which puts the C++ library first, wherever -lvaro is on
# the command line.
configure_file(cmake/libvaro.so.in development/libvaro.so @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/development/libvaro.so
    DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development)
# Not a file set: this CMake's packages lead to a wrong place when its directory is absolute.
install(DIRECTORY include/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT development)
install(EXPORT varoTargets NAMESPACE varo:: DESTINATION ${varoPackageDir} COMPONENT development)
install(FILES
    ${CMAKE_CURRENT_BINARY_DIR}/varoConfig.cmake
    ${CMAKE_CURRENT_BINARY_DIR}/varoConfigVersion.cmake
    ${CMAKE_CURRENT_BINARY_DIR}/varoCompletions.cmake
    ${CMAKE_CURRENT_BINARY_DIR}/varoManual.cmake
    DESTINATION ${varoPackageDir} COMPONENT development)
install(DIRECTORY ${CMAKE_CURRENT_BINARY_DIR}/stubs
    DESTINATION ${varoPackageDir} COMPONENT development)

if(VARO_DEBIAN)
    include(cmake/varoDebian.cmake)
endif()
