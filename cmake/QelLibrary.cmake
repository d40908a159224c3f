# How every target of the project is built: one object library per folder, shared libraries made of them.

add_library(qel_options INTERFACE)
target_compile_options(qel_options INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Werror
    $<$<CXX_COMPILER_ID:Clang>:-Wno-sign-conversion>) # part of -Wconversion for clang alone
# A symbol that is unique in the process pins its library: it could never be unloaded, nor a load be undone.
target_compile_options(qel_options INTERFACE $<$<COMPILE_LANG_AND_ID:CXX,GNU>:-fno-gnu-unique>)
if(QEL_SANITIZE)
    target_compile_options(qel_options INTERFACE
        -fsanitize=${QEL_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(qel_options INTERFACE -fsanitize=${QEL_SANITIZE})
endif()
if(QEL_COVERAGE)
    target_compile_options(qel_options INTERFACE --coverage -fprofile-update=atomic)
    target_link_options(qel_options INTERFACE --coverage)
endif()

# The same object goes into a library and into a program that holds all of them, so that no source of the house may ask
# for a name of another library in the way that only the import of a DLL can answer.
set(QEL_HOUSE_DEFINITIONS "")
if(WIN32)
    set(QEL_HOUSE_DEFINITIONS QEL_IMPORT=)
endif()

# qel_objects(NAME LIBRARY <shared library it goes into> [DEPENDS <targets>] [DIRS <folders>])
# Compiles every source of this folder (or DIRS) into the object library NAME.
function(qel_objects name)
    cmake_parse_arguments(ARG "" "LIBRARY" "DEPENDS;DIRS" ${ARGN})
    if(NOT ARG_DIRS)
        set(ARG_DIRS ${CMAKE_CURRENT_SOURCE_DIR})
    endif()
    set(sources "")
    foreach(dir IN LISTS ARG_DIRS)
        file(GLOB found CONFIGURE_DEPENDS ${dir}/*.cpp)
        list(APPEND sources ${found})
    endforeach()
    add_library(${name} OBJECT ${sources})
    string(TOUPPER ${ARG_LIBRARY} upper)
    target_compile_definitions(${name} PRIVATE ${upper}_BUILD ${QEL_HOUSE_DEFINITIONS})
    target_link_libraries(${name} PRIVATE qel_options PUBLIC ${ARG_DEPENDS})
endfunction()

# qel_public_headers(OUT BASE LIBRARY)
# The public headers of BASE/LIBRARY: what its header of the same name brings; every header of a folder without one.
function(qel_public_headers out base library)
    set(headers "")
    set(todo ${library}/${library}.h)
    if(NOT EXISTS ${base}/${library}/${library}.h)
        file(GLOB todo CONFIGURE_DEPENDS RELATIVE ${base} ${base}/${library}/*.h)
    endif()
    while(todo)
        list(POP_FRONT todo header)
        if(header IN_LIST headers OR NOT EXISTS ${base}/${header})
            continue()
        endif()
        list(APPEND headers ${header})
        set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${base}/${header})
        file(STRINGS ${base}/${header} lines REGEX "^#include <${library}/")
        foreach(line IN LISTS lines)
            string(REGEX REPLACE ".*<(.*)>.*" "\\1" included "${line}")
            list(APPEND todo ${included})
        endforeach()
    endwhile()
    list(TRANSFORM headers PREPEND ${base}/)
    set(${out} ${headers} PARENT_SCOPE)
endfunction()

# qel_shared(NAME OBJECTS <object libraries> [USES <libraries of the house>] [DEPENDS <outside libraries>]
#            INCLUDE <folder> DESCRIPTION <one line>)
# Makes the shared library NAME, seen by others as qelprop4::NAME, and installs it with its public headers.
function(qel_shared name)
    cmake_parse_arguments(ARG "" "INCLUDE;DESCRIPTION" "OBJECTS;USES;DEPENDS" ${ARGN})
    set(objects "")
    foreach(target IN LISTS ARG_OBJECTS)
        list(APPEND objects $<TARGET_OBJECTS:${target}>)
    endforeach()
    add_library(${name} SHARED ${objects})
    add_library(qelprop4::${name} ALIAS ${name})
    qel_public_headers(headers ${ARG_INCLUDE} ${name})
    target_sources(${name} PUBLIC FILE_SET HEADERS BASE_DIRS ${ARG_INCLUDE} FILES ${headers})
    target_link_libraries(${name} PUBLIC ${ARG_USES} PRIVATE ${ARG_DEPENDS} $<BUILD_INTERFACE:qel_options>)
    target_compile_features(${name} INTERFACE cxx_std_17)
    if(NOT QEL_SANITIZE) # whose run-time is the program's
        target_link_options(${name} PRIVATE -Wl,--no-undefined)
    endif()
    if(WIN32)
        set_target_properties(${name} PROPERTIES PREFIX "")
    endif()
    set_target_properties(${name} PROPERTIES
        VERSION ${PROJECT_VERSION}
        SOVERSION ${PROJECT_VERSION_MAJOR}
        VERIFY_INTERFACE_HEADER_SETS ON
        INSTALL_RPATH "$ORIGIN"
        QEL_USES "${ARG_USES}"
        QEL_DESCRIPTION "${ARG_DESCRIPTION}")
    set_property(GLOBAL APPEND PROPERTY QEL_SHARED_LIBRARIES ${name})
    set_property(GLOBAL APPEND PROPERTY QEL_OBJECT_LIBRARIES ${ARG_OBJECTS})
    set_property(GLOBAL APPEND PROPERTY QEL_OUTSIDE_LIBRARIES ${ARG_DEPENDS})
endfunction()

# qel_whole(NAME)
# Makes the static library NAME of every object so far: for tests, benchmarks and fuzz targets, which reach what is
# hidden in the shared libraries.
function(qel_whole name)
    get_property(object_libraries GLOBAL PROPERTY QEL_OBJECT_LIBRARIES)
    get_property(shared_libraries GLOBAL PROPERTY QEL_SHARED_LIBRARIES)
    get_property(outside_libraries GLOBAL PROPERTY QEL_OUTSIDE_LIBRARIES)
    list(REMOVE_ITEM outside_libraries ${shared_libraries})
    list(REMOVE_DUPLICATES outside_libraries)
    add_library(${name} STATIC EXCLUDE_FROM_ALL)
    foreach(target IN LISTS object_libraries)
        target_sources(${name} PRIVATE $<TARGET_OBJECTS:${target}>)
    endforeach()
    set_target_properties(${name} PROPERTIES LINKER_LANGUAGE CXX)
    target_link_libraries(${name} PUBLIC ${outside_libraries} qel_libeval_headers)
    target_include_directories(${name} PUBLIC ${PROJECT_SOURCE_DIR})
    target_compile_definitions(${name} INTERFACE ${QEL_HOUSE_DEFINITIONS})
    if(WIN32)
        target_link_options(${name} INTERFACE -static)
    endif()
endfunction()
