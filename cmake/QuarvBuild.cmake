# Settings and helpers shared by every target: language level, warnings, sanitizers, and the
# three ways this tree makes targets (a library a folder, a program, a test program).

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)

find_program(QUARV_CCACHE ccache)
if(QUARV_CCACHE)
    set(CMAKE_CXX_COMPILER_LAUNCHER ${QUARV_CCACHE})
endif()
find_program(QUARV_MOLD mold)
if(QUARV_MOLD)
    add_link_options(-fuse-ld=mold)
endif()

# QT_NO_KEYWORDS keeps `signals`, `slots` and `emit` free for the system's own words.
add_compile_definitions(QT_NO_KEYWORDS QT_NO_CAST_FROM_BYTEARRAY QT_NO_FOREACH
                        QUARV_VERSION="${PROJECT_VERSION}")
add_compile_options(-Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual)
# GCC 12 sees overlaps in std::string's operator+ that are not there (GCC bug 105651).
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    add_compile_options(-Wno-restrict)
endif()
if(QUARV_WERROR)
    add_compile_options(-Werror)
endif()
if(QUARV_SANITIZE)
    add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all
                        -fno-omit-frame-pointer)
    add_link_options(-fsanitize=address,undefined)
endif()

# quarv_library(NAME SOURCES files... LINKS targets...)
# One static library for the calling folder. LINKS are public, so that arrows stay visible.
function(quarv_library name)
    cmake_parse_arguments(ARG "" "" "SOURCES;LINKS" ${ARGN})
    add_library(${name} STATIC ${ARG_SOURCES})
    target_include_directories(${name} PUBLIC ${CMAKE_SOURCE_DIR}/src)
    target_link_libraries(${name} PUBLIC ${ARG_LINKS})
    set_target_properties(${name} PROPERTIES AUTOMOC ON AUTORCC ON)
endfunction()

# quarv_program(NAME SOURCES files... LINKS targets...)
function(quarv_program name)
    cmake_parse_arguments(ARG "" "" "SOURCES;LINKS" ${ARGN})
    add_executable(${name} ${ARG_SOURCES})
    target_include_directories(${name} PRIVATE ${CMAKE_SOURCE_DIR}/src)
    target_link_libraries(${name} PRIVATE ${ARG_LINKS})
    set_target_properties(${name} PROPERTIES AUTOMOC ON AUTORCC ON)
endfunction()

# quarv_test(NAME SOURCES files... LINKS targets... [MAIN])
# A GoogleTest program whose tests ctest lists one by one. Widget tests run offscreen. With MAIN
# the sources bring their own main() (they need a QApplication).
function(quarv_test name)
    cmake_parse_arguments(ARG "MAIN" "" "SOURCES;LINKS" ${ARGN})
    add_executable(${name} ${ARG_SOURCES})
    target_include_directories(${name} PRIVATE ${CMAKE_SOURCE_DIR}/src ${CMAKE_SOURCE_DIR}/tests)
    if(ARG_MAIN)
        target_link_libraries(${name} PRIVATE ${ARG_LINKS} GTest::gmock)
    else()
        target_link_libraries(${name} PRIVATE ${ARG_LINKS} GTest::gmock GTest::gmock_main)
    endif()
    set_target_properties(${name} PROPERTIES AUTOMOC ON RUNTIME_OUTPUT_DIRECTORY
                                             ${CMAKE_BINARY_DIR}/tests)
    # Compiling a test takes longer than running it.
    target_compile_options(${name} PRIVATE -O0)
    gtest_discover_tests(
        ${name}
        TEST_PREFIX "${name}."
        NO_PRETTY_VALUES
        DISCOVERY_TIMEOUT 60
        PROPERTIES ENVIRONMENT "QT_QPA_PLATFORM=offscreen;LC_ALL=C.UTF-8" TIMEOUT 120)
endfunction()
