# What every target of this project is compiled with.
set(CMAKE_AUTOMOC ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)

add_library(panedeck_flags INTERFACE)
target_compile_features(panedeck_flags INTERFACE cxx_std_17)
target_compile_options(panedeck_flags INTERFACE -Wall -Wextra)
# Where a processor multiplies and adds in one step, a place on the scale would come out a pixel beside itself.
target_compile_options(panedeck_flags INTERFACE $<$<CXX_COMPILER_ID:GNU,Clang>:-ffp-contract=off>)
target_compile_definitions(panedeck_flags INTERFACE QT_NO_KEYWORDS QT_NO_FOREACH)
if(PANEDECK_WERROR)
    target_compile_options(panedeck_flags INTERFACE -Werror)
endif()
if(PANEDECK_SANITIZE)
    target_compile_options(panedeck_flags INTERFACE -fsanitize=address,undefined -fno-sanitize-recover=all
                                                    -fno-omit-frame-pointer)
    target_link_options(panedeck_flags INTERFACE -fsanitize=address,undefined)
endif()
