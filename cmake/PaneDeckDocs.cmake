# cmake --build ... --target docs: the public headers' comments as a reference in docs/reference of the build tree, if
# there is a Doxygen. Its warnings are errors.
find_package(Doxygen QUIET)
if(DOXYGEN_FOUND)
    set(DOXYGEN_OUTPUT_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR}/docs/reference)
    set(DOXYGEN_PROJECT_NAME PaneDeck)
    set(DOXYGEN_USE_MDFILE_AS_MAINPAGE docs/embedding.md)
    set(DOXYGEN_IMAGE_PATH docs)
    set(DOXYGEN_STRIP_FROM_INC_PATH src/deck src/devicetree designer)
    set(DOXYGEN_ALWAYS_DETAILED_SEC YES)
    set(DOXYGEN_GENERATE_LATEX NO)
    set(DOXYGEN_HAVE_DOT NO)
    set(DOXYGEN_CLASS_GRAPH NO)
    set(DOXYGEN_QUIET YES)
    set(DOXYGEN_WARN_AS_ERROR FAIL_ON_WARNINGS)
    set(DOXYGEN_WARN_IF_UNDOCUMENTED NO)
    set(DOXYGEN_MACRO_EXPANSION YES)
    set(DOXYGEN_PREDEFINED Q_OBJECT= PANEDECK_EXPORT=)
    doxygen_add_docs(docs
        docs/embedding.md src/deck/CPaneDeck.h src/deck/PaneDeckTypes.h
        src/devicetree/CDeviceTreeWidget.h src/devicetree/MyMimeData.h designer/FormDeck.h
        WORKING_DIRECTORY ${PROJECT_SOURCE_DIR}
        COMMENT "Making the reference"
    )
endif()
