# Installs the libraries, the public headers, a CMake package and a pkg-config file.
include(CMakePackageConfigHelpers)

set(panedeck_include ${CMAKE_INSTALL_INCLUDEDIR}/PaneDeck)
set(panedeck_cmake ${CMAKE_INSTALL_LIBDIR}/cmake/PaneDeck)

install(TARGETS panedeck panedeck_devicetree EXPORT PaneDeckTargets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
)
install(FILES
    src/deck/CPaneDeck.h
    src/deck/PaneDeckExport.h
    src/deck/PaneDeckTypes.h
    src/devicetree/CDeviceTreeWidget.h
    src/devicetree/MyMimeData.h
    DESTINATION ${panedeck_include}
)
install(EXPORT PaneDeckTargets NAMESPACE PaneDeck:: DESTINATION ${panedeck_cmake})

configure_package_config_file(cmake/PaneDeckConfig.cmake.in ${CMAKE_CURRENT_BINARY_DIR}/PaneDeckConfig.cmake
    INSTALL_DESTINATION ${panedeck_cmake})
write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/PaneDeckConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/PaneDeckConfig.cmake ${CMAKE_CURRENT_BINARY_DIR}/PaneDeckConfigVersion.cmake
    DESTINATION ${panedeck_cmake})

file(RELATIVE_PATH panedeck_pc_root /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
configure_file(cmake/panedeck.pc.in ${CMAKE_CURRENT_BINARY_DIR}/panedeck.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/panedeck.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
