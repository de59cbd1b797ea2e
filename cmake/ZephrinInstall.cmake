# What a host gets by "cmake --install", as components that can be installed alone:
#
#   runtime   the shared library
#   devel     the static library, public headers, find_package(Zephrin) and pkg-config
#   designer  the plugin for Qt Designer
#   reader    the program that reads Access and Excel files
#   demo      the demo host with its sample data

set(zephrin_cmake_dir ${CMAKE_INSTALL_LIBDIR}/cmake/Zephrin)

# One file of targets for each library: a host that links the shared one need not have what the static one is linked with.
foreach(name Shared Static)
    if(NOT TARGET Zephrin${name})
        continue()
    endif()
    install(TARGETS Zephrin${name} EXPORT Zephrin${name}Targets
        LIBRARY COMPONENT runtime NAMELINK_COMPONENT devel
        ARCHIVE COMPONENT devel)
    install(EXPORT Zephrin${name}Targets NAMESPACE Zephrin:: DESTINATION ${zephrin_cmake_dir} COMPONENT devel)
endforeach()
install(DIRECTORY ${PROJECT_SOURCE_DIR}/include/zephrin DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT devel
    FILES_MATCHING PATTERN *.h)

include(CMakePackageConfigHelpers)
set(zephrin_plugin_dir ${CMAKE_INSTALL_LIBDIR}/qt6/plugins)
configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/ZephrinConfig.cmake.in
    ${PROJECT_BINARY_DIR}/ZephrinConfig.cmake INSTALL_DESTINATION ${zephrin_cmake_dir} PATH_VARS zephrin_plugin_dir)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/ZephrinConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/ZephrinConfig.cmake ${PROJECT_BINARY_DIR}/ZephrinConfigVersion.cmake
    DESTINATION ${zephrin_cmake_dir} COMPONENT devel)

# The prefix is found from where the file lies, so that the installed tree can be moved. A library of each kind has a file of
# its own, since the linker takes the shared one wherever both lie side by side under one name.
set(pkgconfig_dir ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
file(RELATIVE_PATH prefix_from_pkgconfig /prefix/${pkgconfig_dir} /prefix)
string(REGEX REPLACE "/$" "" prefix_from_pkgconfig "${prefix_from_pkgconfig}")

# zephrin_pkgconfig(NAME LIBRARY [REQUIRES])
function(zephrin_pkgconfig name library)
    set(libs "-l${library}")
    if(ZEPHRIN_SANITIZE)
        string(APPEND libs " -fsanitize=address,undefined")
    endif()
    configure_file(${PROJECT_SOURCE_DIR}/cmake/zephrin.pc.in ${PROJECT_BINARY_DIR}/${name}.pc @ONLY)
    install(FILES ${PROJECT_BINARY_DIR}/${name}.pc DESTINATION ${pkgconfig_dir} COMPONENT devel)
endfunction()

if(TARGET ZephrinShared)
    zephrin_pkgconfig(zephrin Zephrin)
endif()
if(TARGET ZephrinStatic)
    zephrin_pkgconfig(zephrin-static :libZephrin.a " Qt6Svg sqlite3 odbc icu-i18n libzip")
endif()
