# A pair of Debian packages, made by cpack in a build with the preset debian: the library in the
# multiarch directory, and what programs are built with, together with all documents.
set(series ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR})
set(runtimePackage libvaro${series})
set(developmentPackage libvaro-dev)

# The reference pages of the public headers.
find_program(doxygen doxygen REQUIRED)
set(settings "OUTPUT_DIRECTORY=${CMAKE_CURRENT_BINARY_DIR}\\nWARN_AS_ERROR=NO")
add_custom_target(reference ALL
    COMMAND sh -c "{ cat Doxyfile; printf '${settings}'; } | ${doxygen} -q -"
    WORKING_DIRECTORY ${PROJECT_SOURCE_DIR}
    VERBATIM)

# The documents keep their relative places, for the links between them.
set(documents ${CMAKE_INSTALL_DATADIR}/doc/${developmentPackage})
install(FILES README.md CHANGELOG.md DESTINATION ${documents} COMPONENT development)
install(DIRECTORY docs ${CMAKE_CURRENT_BINARY_DIR}/reference
    DESTINATION ${documents} COMPONENT development)

# What the distribution's policy requires.
set(maintainer "The varo developers <varo@varo.invalid>")
string(TIMESTAMP today "%a, %d %b %Y %H:%M:%S +0000" UTC)
set(control ${CMAKE_CURRENT_BINARY_DIR}/control)
file(WRITE ${control}/shlibs "libvaro ${series} ${runtimePackage} (>= ${PROJECT_VERSION})\n")
file(WRITE ${control}/triggers "activate-noawait ldconfig\n")
file(WRITE ${control}/changelog
    "varo (${PROJECT_VERSION}) unstable; urgency=medium\n\n"
    "  * CHANGELOG.md of the package ${developmentPackage} tells what changed.\n\n"
    " -- ${maintainer}  ${today}\n")
execute_process(COMMAND gzip -9nf ${control}/changelog COMMAND_ERROR_IS_FATAL ANY)
foreach(component IN ITEMS runtime development)
    install(FILES cmake/copyright ${control}/changelog.gz
        DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${${component}Package} COMPONENT ${component})
endforeach()

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_VENDOR "the varo developers")
set(CPACK_PACKAGE_CONTACT "${maintainer}")
set(CPACK_COMPONENTS_ALL runtime development)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME ${runtimePackage})
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA ${control}/shlibs ${control}/triggers)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME ${developmentPackage})
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS
    "${runtimePackage} (= ${PROJECT_VERSION}), libstdc++-12-dev | libstdc++-dev")
set(CPACK_COMPONENT_RUNTIME_DESCRIPTION
    "command-line parsing library, shared library\n Declares options, actions and modifiers, parses arguments, writes help.")
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION
    "command-line parsing library, headers and documents\n What programs that use libvaro are compiled with, and how they use it.")
include(CPack)
