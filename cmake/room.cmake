# A room of the house: a library of the sources in src/<name> that includes its own headers and
# those of the rooms it may know, directly or through them, and no others. The include folder is
# src/ for all; what a room includes is checked before it is compiled. LIGHT rooms wait for a user or
# a disk.
function(ostrand_room name)
  cmake_parse_arguments(ROOM "LIGHT" "FOLDER" "KNOWS" ${ARGN})
  if(NOT ROOM_FOLDER)
    set(ROOM_FOLDER ${name})
  endif()
  set(library ostrand_${name})
  set(known_folders)
  foreach(known ${ROOM_KNOWS})
    get_target_property(folders ostrand_${known} OSTRAND_FOLDERS)
    list(APPEND known_folders ${folders})
  endforeach()
  list(SORT known_folders)
  list(REMOVE_DUPLICATES known_folders)

  set(folder ${PROJECT_SOURCE_DIR}/src/${ROOM_FOLDER})
  file(GLOB sources CONFIGURE_DEPENDS ${folder}/*.cpp)
  file(GLOB headers CONFIGURE_DEPENDS ${folder}/*.h)
  set(stamp ${PROJECT_BINARY_DIR}/rooms/${name}.checked)
  set(check ${CMAKE_CURRENT_FUNCTION_LIST_DIR}/check_room.cmake)
  add_custom_command(OUTPUT ${stamp}
    COMMAND ${CMAKE_COMMAND} -DSOURCE_DIR=${PROJECT_SOURCE_DIR} -DROOM=${ROOM_FOLDER}
      "-DKNOWS=${known_folders}" -DSTAMP=${stamp} -P ${check}
    DEPENDS ${sources} ${headers} ${check}
    COMMENT "Checking the includes of src/${ROOM_FOLDER}" VERBATIM)
  add_custom_target(${library}_includes DEPENDS ${stamp})

  add_library(${library} STATIC ${sources})
  add_dependencies(${library} ${library}_includes)
  set_target_properties(${library} PROPERTIES OSTRAND_FOLDERS "${known_folders};${ROOM_FOLDER}")
  target_include_directories(${library} PUBLIC ${PROJECT_SOURCE_DIR}/src)
  target_link_libraries(${library} PRIVATE ostrand_flags)
  if(ROOM_LIGHT)
    ostrand_light(${library})
  endif()
  ostrand_precompiled(${library})
  foreach(known ${ROOM_KNOWS})
    target_link_libraries(${library} PUBLIC ostrand_${known})
  endforeach()
  set_property(DIRECTORY APPEND PROPERTY OSTRAND_ROOMS ${library})
endfunction()

# Joins the objects of all rooms so far into one static library, with include/ as its interface.
function(ostrand_join_rooms library)
  get_property(rooms DIRECTORY PROPERTY OSTRAND_ROOMS)
  set(objects)
  foreach(room ${rooms})
    list(APPEND objects $<TARGET_OBJECTS:${room}>)
  endforeach()
  add_library(${library} STATIC ${objects})
  set_target_properties(${library} PROPERTIES
    OUTPUT_NAME ostrand EXPORT_NAME ostrand LINKER_LANGUAGE CXX)
  target_include_directories(${library} INTERFACE
    $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/include>
    $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
  target_compile_features(${library} INTERFACE cxx_std_17)
  if(OSTRAND_SANITIZE)
    target_link_options(${library} INTERFACE $<BUILD_INTERFACE:-fsanitize=${OSTRAND_SANITIZE}>)
  endif()
endfunction()

# Optimizes a target that waits for a user or a disk less, which compiles a third faster. Precompiled
# headers depend on it, so it comes before them.
function(ostrand_light target)
  target_compile_options(${target} PRIVATE $<$<CONFIG:Release>:-O1>)
  set_target_properties(${target} PROPERTIES OSTRAND_PACE _LIGHT)
endfunction()

# Has the standard headers that most sources include read once, for the first target of each kind of
# optimization, and not for each source. With clang a source still sees its own includes alone, so
# that a missing one is found. Further headers, such as those of Qt, make a set of the target's own;
# AS takes another target's.
function(ostrand_precompiled target)
  cmake_parse_arguments(SET "" "AS" "" ${ARGN})
  if(NOT CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    return()
  endif()
  target_compile_options(${target} PRIVATE
    -fpch-preprocess  # so that the compiler cache sees that they are used
    # False alarms of g++ 12 within these headers, which it keeps to itself in those that it reads.
    -Wno-array-bounds -Wno-stringop-overflow -Wno-stringop-overread)
  set(standard <algorithm> <array> <functional> <memory> <optional> <span> <string> <string_view>
    <utility> <vector>)
  get_target_property(pace ${target} OSTRAND_PACE)
  if(NOT pace)
    set(pace "")
  endif()
  get_property(first GLOBAL PROPERTY OSTRAND_PRECOMPILED${pace})
  if(SET_AS)
    target_precompile_headers(${target} REUSE_FROM ${SET_AS})
  elseif(SET_UNPARSED_ARGUMENTS)
    target_precompile_headers(${target} PRIVATE ${standard} ${SET_UNPARSED_ARGUMENTS})
  elseif(first)
    target_precompile_headers(${target} REUSE_FROM ${first})
  else()
    target_precompile_headers(${target} PRIVATE ${standard})
    set_property(GLOBAL PROPERTY OSTRAND_PRECOMPILED${pace} ${target})
  endif()
endfunction()
