# Flags and helpers that every target of the project shares.

add_library(kelmoran_flags INTERFACE)
target_compile_options(kelmoran_flags INTERFACE
    -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror)
target_compile_definitions(kelmoran_flags INTERFACE
    QT_NO_KEYWORDS QT_NO_CAST_FROM_BYTEARRAY QT_NO_CAST_TO_ASCII QT_NO_URL_CAST_FROM_STRING
    QT_DISABLE_DEPRECATED_BEFORE=0x060400)
# The gold linker, where there is one, takes a quarter of the time for the many tests.
include(CheckLinkerFlag)
check_linker_flag(CXX -fuse-ld=gold KELMORAN_HAS_GOLD)
if(KELMORAN_HAS_GOLD)
    add_link_options(-fuse-ld=gold)
endif()
if(KELMORAN_SANITIZE)
    target_compile_options(kelmoran_flags INTERFACE
        -fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
    target_link_options(kelmoran_flags INTERFACE -fsanitize=address,undefined)
endif()

# One room of the program: a static library with its own include path. It sees the rooms that it
# names after USES, and through them the rooms below.
function(kelmoran_room name)
    cmake_parse_arguments(ARG "" "" "SOURCES;USES" ${ARGN})
    add_library(kelmoran_${name} STATIC ${ARG_SOURCES})
    # A dialog holds its form by value, so that its header needs the form's generated one.
    target_include_directories(kelmoran_${name} PUBLIC
        ${CMAKE_CURRENT_SOURCE_DIR} ${CMAKE_CURRENT_BINARY_DIR}/kelmoran_${name}_autogen/include)
    target_link_libraries(kelmoran_${name} PUBLIC ${ARG_USES} PRIVATE kelmoran_flags)
    if(KELMORAN_SANITIZE)
        target_link_options(kelmoran_${name} PUBLIC -fsanitize=address,undefined)
    endif()
endfunction()

# A Qt Test program that runs the same on every machine: no display, a plain locale, UTC.
# LABEL is unit (the default), task, report (pages of the web engine), long (a second or more of
# samples or pictures), or rehearsal (whole tests played by the program).
function(kelmoran_test name)
    cmake_parse_arguments(ARG "" "LABEL;TIMEOUT" "SOURCES;USES" ${ARGN})
    if(NOT ARG_SOURCES)
        set(ARG_SOURCES ${name}.cpp)
    endif()
    if(NOT ARG_LABEL)
        set(ARG_LABEL unit)
    endif()
    if(NOT ARG_TIMEOUT)
        set(ARG_TIMEOUT 120)
    endif()
    add_executable(${name} ${ARG_SOURCES})
    target_link_libraries(${name} PRIVATE ${ARG_USES} Qt6::Test kelmoran_flags)
    # What is tested is built as it ships; the test itself needn't be fast.
    target_compile_options(${name} PRIVATE $<$<CONFIG:Release>:-O0>)
    add_test(NAME ${name} COMMAND ${name})
    set_tests_properties(${name} PROPERTIES
        LABELS ${ARG_LABEL}
        TIMEOUT ${ARG_TIMEOUT}
        ENVIRONMENT "QT_QPA_PLATFORM=offscreen;LC_ALL=C.UTF-8;TZ=UTC;QT_LOGGING_RULES=;ASAN_OPTIONS=detect_leaks=0:new_delete_type_mismatch=0")
endfunction()
