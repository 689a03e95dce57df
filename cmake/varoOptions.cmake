# How our own targets are compiled and linked. Users of the library get none of this.

# All our targets: warnings, and the sanitizers that were asked for.
add_library(varo_options INTERFACE)
target_compile_options(varo_options INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow
    $<$<BOOL:${VARO_WERROR}>:-Werror>)
# As a part of another project, which has its own flags: it need not see our warnings, and our sources
# need features that it may have switched off.
if(NOT PROJECT_IS_TOP_LEVEL)
    target_compile_options(varo_options INTERFACE -w -fexceptions -frtti)
endif()
if(VARO_SANITIZE)
    set(sanitize -fsanitize=${VARO_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_compile_options(varo_options INTERFACE ${sanitize})
    target_link_options(varo_options INTERFACE ${sanitize})
endif()
if(VARO_FUZZ)
    target_compile_options(varo_options INTERFACE -fsanitize=fuzzer-no-link)
endif()

# The library itself is hardened; scripts/check-library looks for each of these in what was built.
# FORTIFY needs an optimised build and hides errors from the sanitizers, which find them anyway.
add_library(varo_hardening INTERFACE)
# The standard library's own checks are left out of a release on the path of the arguments, where they
# cost 5 % of its instructions and a tenth of its size; the root file puts them into the rest.
target_compile_definitions(varo_hardening INTERFACE $<$<NOT:$<CONFIG:Release>>:_GLIBCXX_ASSERTIONS>)
if(NOT VARO_SANITIZE)
    target_compile_options(varo_hardening INTERFACE
        -fstack-protector-strong -fcf-protection
        $<$<CONFIG:Release,RelWithDebInfo,MinSizeRel>:-U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2>)
    # A host's sanitizers and coverage leave symbols for the program to define, so only our own build
    # forbids undefined ones.
    target_link_options(varo_hardening INTERFACE
        $<$<BOOL:${PROJECT_IS_TOP_LEVEL}>:-Wl,-z,defs>
        -Wl,-z,relro -Wl,-z,now -Wl,-z,noexecstack -Wl,-z,ibt -Wl,-z,shstk)
endif()
