# Finds TinyXML 2.6 and defines the target TinyXML::TinyXML.
find_path(TinyXML_INCLUDE_DIR tinyxml.h)
find_library(TinyXML_LIBRARY tinyxml)
include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(TinyXML DEFAULT_MSG TinyXML_LIBRARY TinyXML_INCLUDE_DIR)
mark_as_advanced(TinyXML_INCLUDE_DIR TinyXML_LIBRARY)

if(TinyXML_FOUND AND NOT TARGET TinyXML::TinyXML)
    add_library(TinyXML::TinyXML UNKNOWN IMPORTED GLOBAL)
    set_target_properties(TinyXML::TinyXML PROPERTIES
        IMPORTED_LOCATION "${TinyXML_LIBRARY}"
        INTERFACE_INCLUDE_DIRECTORIES "${TinyXML_INCLUDE_DIR}")
endif()
