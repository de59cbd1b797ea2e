# What a host gets by "cmake --install": the shared library, the public headers, and a package for find_package(Zephrin).
# A static Zephrin is a pile of rooms; a host takes it in by add_subdirectory.
if(NOT BUILD_SHARED_LIBS)
    return()
endif()

include(GNUInstallDirs)
include(CMakePackageConfigHelpers)
set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/Zephrin)

target_include_directories(Zephrin PUBLIC $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
install(TARGETS Zephrin EXPORT ZephrinTargets)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/include/zephrin DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(EXPORT ZephrinTargets NAMESPACE Zephrin:: DESTINATION ${package_dir})

configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/ZephrinConfig.cmake.in
    ${PROJECT_BINARY_DIR}/ZephrinConfig.cmake INSTALL_DESTINATION ${package_dir})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/ZephrinConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/ZephrinConfig.cmake ${PROJECT_BINARY_DIR}/ZephrinConfigVersion.cmake
    DESTINATION ${package_dir})
