# Pictures of the icons' drawings under the drawings' names, for ordinary and for fine screens, and the program's own icon.
# Sets `icons` to the resource file and `program_icon` to what a program links.
find_program(RSVG_CONVERT rsvg-convert REQUIRED)
find_program(ICOTOOL icotool REQUIRED)
set(pictures ${CMAKE_CURRENT_BINARY_DIR}/icons)
file(MAKE_DIRECTORY ${pictures})

# draw(DRAWING PICTURE PIXELS)
function(draw drawing picture pixels)
    add_custom_command(OUTPUT ${picture}
        COMMAND ${RSVG_CONVERT} --width ${pixels} --height ${pixels} --output ${picture} ${drawing}
        DEPENDS ${drawing} VERBATIM)
endfunction()

file(GLOB drawings CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/ui/icons/*.svg)
set(list "<RCC><qresource prefix=\"/icons\">")
foreach(drawing IN LISTS drawings)
    get_filename_component(name ${drawing} NAME_WE)
    draw(${drawing} ${pictures}/${name}.png 32)
    draw(${drawing} ${pictures}/${name}@2x.png 64)
    string(APPEND list "<file alias=\"${name}.svg\">${name}.png</file><file alias=\"${name}@2x.svg\">${name}@2x.png</file>")
endforeach()
file(CONFIGURE OUTPUT ${pictures}/icons.qrc CONTENT "${list}</qresource></RCC>\n" @ONLY)
set(icons ${pictures}/icons.qrc)

set(sizes 16 32 48 256)
set(icon_pictures)
foreach(size IN LISTS sizes)
    draw(${CMAKE_CURRENT_SOURCE_DIR}/ui/icons/tavex2.svg ${pictures}/program-${size}.png ${size})
    list(APPEND icon_pictures ${pictures}/program-${size}.png)
endforeach()
add_custom_command(OUTPUT ${pictures}/tavex2.ico
    COMMAND ${ICOTOOL} --create --output ${pictures}/tavex2.ico ${icon_pictures}
    DEPENDS ${icon_pictures} VERBATIM)
set(program_icon ${CMAKE_CURRENT_LIST_DIR}/tavex2.rc)
enable_language(RC)
set_source_files_properties(${program_icon} PROPERTIES
    OBJECT_DEPENDS ${pictures}/tavex2.ico INCLUDE_DIRECTORIES ${pictures})
