# Manual pages, for programs that call varo::answerShell with what they say of themselves.

# Installs the manual page that the executable TARGET writes:
# varo_install_manual(TARGET [SECTION NUMBER]), where the section, by default 1, must be the one that
# the program gives. The build runs the program, through CMAKE_CROSSCOMPILING_EMULATOR if need be.
function(varo_install_manual target)
    include(GNUInstallDirs)
    cmake_parse_arguments(PARSE_ARGV 1 manual "" "SECTION" "")
    if(NOT manual_SECTION)
        set(manual_SECTION 1)
    endif()
    get_target_property(name ${target} OUTPUT_NAME)
    if(NOT name)
        set(name ${target})
    endif()
    set(page ${CMAKE_CURRENT_BINARY_DIR}/${name}.${manual_SECTION})
    add_custom_command(OUTPUT ${page}
        COMMAND ${target} varooption=manual man > ${page}
        DEPENDS ${target})
    add_custom_target(${target}_manual ALL DEPENDS ${page})
    install(FILES ${page} DESTINATION ${CMAKE_INSTALL_MANDIR}/man${manual_SECTION})
endfunction()
