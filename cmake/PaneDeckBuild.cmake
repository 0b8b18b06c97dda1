# What every target of this project is compiled with.
set(CMAKE_AUTOMOC ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)

# The build tree is laid out like the installation that a client in bin/ looks for; in a host's tree, like the host's own.
set(panedeck_tree ${CMAKE_BINARY_DIR})
set(panedeck_data ${CMAKE_BINARY_DIR})
if(NOT PROJECT_IS_TOP_LEVEL)
    set(panedeck_data ${CMAKE_BINARY_DIR}/${CMAKE_INSTALL_DATADIR}/panedeck)
    set(PaneDeck_DATA_DIR ${panedeck_data} PARENT_SCOPE)
endif()

# Before 1.0 each minor version may change what others were built against.
set(panedeck_abi ${PROJECT_VERSION_MAJOR})
if(PROJECT_VERSION_MAJOR EQUAL 0)
    set(panedeck_abi 0.${PROJECT_VERSION_MINOR})
endif()

add_library(panedeck_flags INTERFACE)
target_compile_features(panedeck_flags INTERFACE cxx_std_17)
target_compile_options(panedeck_flags INTERFACE $<IF:$<CXX_COMPILER_ID:MSVC>,/W4,-Wall;-Wextra>)
# Where a processor multiplies and adds in one step, a place on the scale would come out a pixel beside itself.
target_compile_options(panedeck_flags INTERFACE $<$<CXX_COMPILER_ID:GNU,Clang>:-ffp-contract=off>)
target_compile_definitions(panedeck_flags INTERFACE QT_NO_KEYWORDS QT_NO_FOREACH)
if(PANEDECK_WERROR)
    target_compile_options(panedeck_flags INTERFACE $<IF:$<CXX_COMPILER_ID:MSVC>,/WX,-Werror>)
endif()
if(PANEDECK_SANITIZE)
    target_compile_options(panedeck_flags INTERFACE -fsanitize=address,undefined -fno-sanitize-recover=all
                                                    -fno-omit-frame-pointer)
    target_link_options(panedeck_flags INTERFACE -fsanitize=address,undefined)
endif()
