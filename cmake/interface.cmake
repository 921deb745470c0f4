# roc_shows_only(TARGET): the library exports what cmake/interface/TARGET.map lets through. A symbol shown by accident
# becomes something that hosts may come to depend on. Its own calls stay within it, whatever functions of the same names
# a host or another library has: bare names such as `auc` and `lower` are common.
function(roc_shows_only target)
    set(map ${PROJECT_SOURCE_DIR}/cmake/interface/${target}.map)
    target_link_options(${target} PRIVATE "LINKER:--version-script=${map}" LINKER:-Bsymbolic-functions)
    set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS ${map})
endfunction()
