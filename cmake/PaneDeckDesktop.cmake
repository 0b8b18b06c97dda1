# What a desktop asks of the client: its menu entry and icon, what software centres tell of it, a manual page.
set(panedeck_packaging ${PROJECT_SOURCE_DIR}/packaging)
foreach(file panedeck-client.metainfo.xml panedeck-client.1)
    configure_file(${panedeck_packaging}/${file}.in ${PROJECT_BINARY_DIR}/packaging/${file} @ONLY)
endforeach()
install(FILES ${panedeck_packaging}/panedeck-client.desktop
    DESTINATION ${CMAKE_INSTALL_DATADIR}/applications COMPONENT client)
install(FILES ${PROJECT_BINARY_DIR}/packaging/panedeck-client.metainfo.xml
    DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo COMPONENT client)
install(FILES ${panedeck_packaging}/panedeck-client.svg
    DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps COMPONENT client)
install(FILES ${PROJECT_BINARY_DIR}/packaging/panedeck-client.1
    DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT client)
