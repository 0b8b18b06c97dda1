# Installs the libraries, the public headers, a CMake package and pkg-config files.
include(CMakePackageConfigHelpers)

set(panedeck_cmake ${CMAKE_INSTALL_LIBDIR}/cmake/${panedeck_package})
set(panedeck_data_dir ${CMAKE_INSTALL_DATADIR}/panedeck)
set(panedeck_config ${PROJECT_BINARY_DIR}/${panedeck_package}Config.cmake)
set(panedeck_config_version ${PROJECT_BINARY_DIR}/${panedeck_package}ConfigVersion.cmake)

install(TARGETS panedeck panedeck_devicetree panedeck_form EXPORT ${panedeck_package}Targets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT library NAMELINK_COMPONENT dev
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT library
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT dev
)
install(FILES
    src/deck/CPaneDeck.h
    src/deck/PaneDeckExport.h
    src/deck/PaneDeckTypes.h
    src/devicetree/CDeviceTreeWidget.h
    src/devicetree/MyMimeData.h
    designer/FormDeck.h
    ${PROJECT_BINARY_DIR}/src/version/PaneDeckVersion.h
    DESTINATION ${panedeck_include} COMPONENT dev
)
install(EXPORT ${panedeck_package}Targets NAMESPACE PaneDeck:: DESTINATION ${panedeck_cmake} COMPONENT dev)

configure_package_config_file(cmake/PaneDeckConfig.cmake.in ${panedeck_config}
    INSTALL_DESTINATION ${panedeck_cmake} PATH_VARS panedeck_data_dir)
write_basic_package_version_file(${panedeck_config_version} COMPATIBILITY SameMinorVersion)
install(FILES ${panedeck_config} ${panedeck_config_version} DESTINATION ${panedeck_cmake} COMPONENT dev)

file(RELATIVE_PATH panedeck_pc_root /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
set(panedeck_pc_qt "Qt${QT_MAJOR}Widgets >= ${QT_VERSION_LEAST}")
if(NOT BUILD_SHARED_LIBS)
    install(FILES cmake/FindTinyXML.cmake DESTINATION ${panedeck_cmake} COMPONENT dev)
    set(panedeck_pc_static ", panedeck-devicetree${panedeck_suffix}, tinyxml, libhwy")
    set(panedeck_pc_flags "-DPANEDECK_STATIC ")
endif()
foreach(name panedeck panedeck-devicetree panedeck-form)
    configure_file(cmake/${name}.pc.in ${PROJECT_BINARY_DIR}/${name}${panedeck_suffix}.pc @ONLY)
    install(FILES ${PROJECT_BINARY_DIR}/${name}${panedeck_suffix}.pc
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT dev)
endforeach()
