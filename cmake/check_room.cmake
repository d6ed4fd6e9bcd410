# Checks that a room includes only its own headers and those of the rooms it may know:
#   cmake -DSOURCE_DIR=... -DROOM=can "-DKNOWS=model;text" [-DSTAMP=FILE] -P check_room.cmake
# Rooms are folders of SOURCE_DIR/src. Each wrong include is an error line with path and line. STAMP
# is touched when there is none.
cmake_minimum_required(VERSION 3.22)

list(JOIN KNOWS ", " known)
if(NOT known)
  set(known "no other room")
endif()

# The number of the line that begins the first occurrence of `line` in a file.
function(line_number file line result)
  file(READ ${file} text)
  string(FIND "\n${text}" "\n${line}" at)
  string(SUBSTRING "\n${text}" 0 ${at} head)
  string(REGEX MATCHALL "\n" breaks "${head}\n")
  list(LENGTH breaks number)
  set(${result} ${number} PARENT_SCOPE)
endfunction()

set(errors 0)
file(GLOB files RELATIVE ${SOURCE_DIR}
  ${SOURCE_DIR}/src/${ROOM}/*.h ${SOURCE_DIR}/src/${ROOM}/*.cpp)
foreach(file IN LISTS files)
  file(STRINGS ${SOURCE_DIR}/${file} includes REGEX "^[ \t]*#[ \t]*include[ \t]*[\"<]")
  foreach(line IN LISTS includes)
    if(NOT line MATCHES "include[ \t]*([\"<])([^\">]+)")
      continue()
    endif()
    set(quote "${CMAKE_MATCH_1}")
    set(header "${CMAKE_MATCH_2}")
    get_filename_component(folder "${header}" DIRECTORY)
    if(folder IN_LIST KNOWS OR folder STREQUAL ROOM)
      continue()
    endif()
    # Headers of the system are none of the house.
    if(quote STREQUAL "<" AND NOT EXISTS "${SOURCE_DIR}/src/${header}")
      continue()
    endif()
    line_number(${SOURCE_DIR}/${file} "${line}" number)
    message(NOTICE
      "${file}:${number}: error: room ${ROOM} may not include ${header}; it knows ${known}")
    math(EXPR errors "${errors} + 1")
  endforeach()
endforeach()
if(errors GREATER 0)
  message(FATAL_ERROR "Wrong includes in src/${ROOM}: ${errors}")
endif()
if(STAMP)
  file(TOUCH ${STAMP})
endif()
