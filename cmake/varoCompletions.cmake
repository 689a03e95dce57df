# Completion in shells, for programs that answer them with varo::answerShell.

# Installs what makes bash, zsh and fish ask the executable TARGET what may be typed:
# varo_install_completions(TARGET). The three files are what "TARGET varooption=script SHELL TARGET"
# writes; the program is not run for them. They go where the shells look under the install prefix.
# Debian's zsh looks elsewhere under /usr: set VARO_ZSH_COMPLETIONS_DIR to share/zsh/vendor-completions
# for its packages.
function(varo_install_completions target)
    include(GNUInstallDirs)
    get_target_property(NAME ${target} OUTPUT_NAME)
    if(NOT NAME)
        set(NAME ${target})
    endif()
    if(NOT NAME MATCHES "^[A-Za-z0-9_.+][-A-Za-z0-9_.+]*$")
        message(FATAL_ERROR "varo_install_completions: '${NAME}' is no name for a stub")
    endif()
    if(NOT VARO_ZSH_COMPLETIONS_DIR)
        set(VARO_ZSH_COMPLETIONS_DIR ${CMAKE_INSTALL_DATADIR}/zsh/site-functions)
    endif()
    set(places
        bash ${CMAKE_INSTALL_DATADIR}/bash-completion/completions "${NAME}"
        zsh ${VARO_ZSH_COMPLETIONS_DIR} "_${NAME}"
        fish ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d "${NAME}.fish")
    while(places)
        list(POP_FRONT places shell directory file)
        set(stub ${CMAKE_CURRENT_BINARY_DIR}/completions/${shell}/${file})
        configure_file(${CMAKE_CURRENT_FUNCTION_LIST_DIR}/stubs/varo.${shell} ${stub} @ONLY)
        install(FILES ${stub} DESTINATION ${directory})
    endwhile()
endfunction()
