# How the layers are built. A core library may link nothing of Qt; asking for it stops the configuration.

add_library(tavex2_warnings INTERFACE)
target_compile_options(tavex2_warnings INTERFACE -Wall -Wextra -Wconversion -Wshadow -Werror)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # GCC 12 reports overlaps inside its own std::string that cannot happen.
    target_compile_options(tavex2_warnings INTERFACE -Wno-restrict)
endif()

function(tavex2_library name)
    add_library(${name} STATIC)
    target_include_directories(${name} PUBLIC ${PROJECT_SOURCE_DIR}/src)
    target_link_libraries(${name} PRIVATE tavex2_warnings)
endfunction()

# tavex2_core_library(NAME SOURCES ... LINKS ...): standard C++ only.
function(tavex2_core_library name)
    cmake_parse_arguments(PARSE_ARGV 1 ARG "" "" "SOURCES;LINKS")
    foreach(dependency IN LISTS ARG_LINKS)
        if(dependency MATCHES "Qt|QCustomPlot|_ui$|_qt$")
            message(FATAL_ERROR "${name} is a core library and must not link ${dependency}")
        endif()
    endforeach()
    tavex2_library(${name})
    target_sources(${name} PRIVATE ${ARG_SOURCES})
    target_link_libraries(${name} PUBLIC ${ARG_LINKS})
endfunction()

# tavex2_window_library(NAME SOURCES ... LINKS ...): Qt allowed, .ui and .qrc files built.
function(tavex2_window_library name)
    cmake_parse_arguments(PARSE_ARGV 1 ARG "" "" "SOURCES;LINKS")
    tavex2_library(${name})
    set_target_properties(${name} PROPERTIES AUTOMOC ON AUTOUIC ON AUTORCC ON)
    target_sources(${name} PRIVATE ${ARG_SOURCES})
    target_compile_definitions(${name} PUBLIC QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_KEYWORDS)
    target_link_libraries(${name} PUBLIC ${ARG_LINKS})
endfunction()

# tavex2_test(NAME [WINDOWS] [SERIAL] SOURCES ... LINKS ...): a GoogleTest program whose tests CTest lists one by one.
# SERIAL: its tests keep time, so nothing else runs beside them.
function(tavex2_test name)
    cmake_parse_arguments(PARSE_ARGV 1 ARG "WINDOWS;SERIAL" "" "SOURCES;LINKS")
    add_executable(${name} ${ARG_SOURCES})
    target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests)
    target_link_libraries(${name} PRIVATE tavex2_warnings ${ARG_LINKS} GTest::gmock)
    # A test's own code runs once: optimising it costs nearly half of its build and saves no time that anyone waits for.
    # The libraries that it tests are optimised as the preset says. Not for Windows: there the property tests lack their
    # library, and only an optimiser leaves out all that they would call.
    if(NOT CMAKE_CROSSCOMPILING)
        target_compile_options(${name} PRIVATE -O0)
    endif()
    if(ARG_WINDOWS)
        # With a main that makes the QApplication; they run on the offscreen platform.
        set_target_properties(${name} PROPERTIES AUTOMOC ON)
        target_link_libraries(${name} PRIVATE window_testing)
        set(environment "QT_QPA_PLATFORM=offscreen")
    else()
        target_link_libraries(${name} PRIVATE GTest::gmock_main)
        set(environment "")
    endif()
    set(serial FALSE)
    if(ARG_SERIAL)
        set(serial TRUE)
    endif()
    if(CMAKE_CROSSCOMPILING)
        # An emulator takes long to start: all tests of a program in one run.
        add_test(NAME ${name} COMMAND ${name})
        set_tests_properties(${name} PROPERTIES TIMEOUT 600 RUN_SERIAL ${serial})
        return()
    endif()
    gtest_discover_tests(${name} DISCOVERY_TIMEOUT 60
        PROPERTIES TIMEOUT 120 RUN_SERIAL ${serial} ENVIRONMENT "${environment}")
endfunction()
