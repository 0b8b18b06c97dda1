# The installation tree that a client expects around its own directory, made in the build tree, so that a client in
# bin/ runs from there: the two styles from the sources in skin/, the configuration as it stands in skin/tree.
find_package(Qt${QT_MAJOR} ${QT_VERSION_LEAST} REQUIRED COMPONENTS Svg)

add_executable(skin_maker
    tools/skin_maker/main.cpp
    tools/skin_maker/PictureWriter.cpp tools/skin_maker/PictureWriter.h
    tools/skin_maker/SheetWriter.cpp tools/skin_maker/SheetWriter.h
    tools/skin_maker/SkinFiles.cpp tools/skin_maker/SkinFiles.h
    tools/skin_maker/SkinTokens.cpp tools/skin_maker/SkinTokens.h
)
target_link_libraries(skin_maker PRIVATE Qt${QT_MAJOR}::Svg panedeck_flags)

set(skin_dir ${PROJECT_SOURCE_DIR}/skin)
set(skin_stamps)

# Makes ${directory} of the build tree anew from a list of pictures and token files, later ones on top.
function(panedeck_make_skin directory pictures)
    file(GLOB_RECURSE sources CONFIGURE_DEPENDS ${skin_dir}/glyphs/*.svg ${skin_dir}/pictures/*.svg
                                                ${skin_dir}/sheets/* ${skin_dir}/tree/${directory}/*)
    set(copy_files)
    if(EXISTS ${skin_dir}/tree/${directory})
        set(copy_files COMMAND ${CMAKE_COMMAND} -E copy_directory ${skin_dir}/tree/${directory}
                               ${panedeck_data}/${directory})
    endif()
    list(TRANSFORM ARGN PREPEND ${skin_dir}/ OUTPUT_VARIABLE tokens)
    set(stamp ${PROJECT_BINARY_DIR}/skin/${directory}.stamp)
    add_custom_command(
        OUTPUT ${stamp}
        COMMAND ${CMAKE_COMMAND} -E rm -rf ${panedeck_data}/${directory}
        COMMAND skin_maker ${skin_dir} ${skin_dir}/${pictures} ${panedeck_data}/${directory} ${tokens}
        ${copy_files}
        COMMAND ${CMAKE_COMMAND} -E make_directory ${PROJECT_BINARY_DIR}/skin
        COMMAND ${CMAKE_COMMAND} -E touch ${stamp}
        DEPENDS skin_maker ${sources} ${tokens} ${skin_dir}/${pictures}
        COMMENT "Making the skin in ${directory}"
    )
    set(skin_stamps ${skin_stamps} ${stamp} PARENT_SCOPE)
endfunction()

panedeck_make_skin(ResourcesBlank style.pictures common.tokens dark.tokens)
panedeck_make_skin(ResourcesWhite style.pictures common.tokens light.tokens)
panedeck_make_skin(Resources shared.pictures common.tokens)
add_custom_target(panedeck_skin ALL DEPENDS ${skin_stamps})

# Whoever plays with the build tree may have chosen the other style there, and has drawn layouts beside it.
if(NOT EXISTS ${panedeck_data}/Organization/Config.ini)
    file(COPY ${skin_dir}/tree/Organization DESTINATION ${panedeck_data})
endif()

add_custom_target(panedeck_languages ALL
    COMMAND ${CMAKE_COMMAND} -E copy_directory ${PROJECT_SOURCE_DIR}/languages ${panedeck_data}/languages
)
if(NOT PROJECT_IS_TOP_LEVEL)
    add_dependencies(panedeck panedeck_skin panedeck_languages)
endif()

if(PANEDECK_INSTALL)
    foreach(directory ResourcesBlank ResourcesWhite Resources)
        install(DIRECTORY ${panedeck_data}/${directory} DESTINATION ${CMAKE_INSTALL_DATADIR}/panedeck COMPONENT data)
    endforeach()
    install(DIRECTORY ${skin_dir}/tree/Organization ${PROJECT_SOURCE_DIR}/languages
        DESTINATION ${CMAKE_INSTALL_DATADIR}/panedeck COMPONENT data)
endif()
