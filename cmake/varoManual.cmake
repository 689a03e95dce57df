# Manual pages, for programs that call varo::answerShell with what they say of themselves.

# Installs the manual page that the executable TARGET writes:
# varo_install_manual(TARGET [SECTION NUMBER]), where the section, by default 1, must be the one that
# the program gives. The build runs the program, through CMAKE_CROSSCOMPILING_EMULATOR if need be. If
# that fails, no empty page is left, which a second build would take for a good one.
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
    string(CONCAT reason "${name} wrote no manual page. If it ended with status 2, its varo::Manual "
        "lacks a name, a summary or a date, or its date is not valid.")
    add_custom_command(OUTPUT ${page}
        COMMAND ${target} varooption=manual man > ${page} ||
            sh -c "rm -f \"$1\" && echo \"$2\" >&2 && false" sh ${page} ${reason}
        DEPENDS ${target}
        VERBATIM)
    add_custom_target(${target}_manual ALL DEPENDS ${page})
    install(FILES ${page} DESTINATION ${CMAKE_INSTALL_MANDIR}/man${manual_SECTION})
endfunction()
