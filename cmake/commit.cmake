# Writes the header with the commit of the sources, only when it has changed: -DSOURCE, -DHEADER. A
# tree without git gives the one that its archive names in .commit, or "unknown".
set(commit unknown)
execute_process(COMMAND git -C ${SOURCE} describe --always --abbrev=12 --dirty --exclude=*
  OUTPUT_VARIABLE described OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET RESULT_VARIABLE failed)
execute_process(COMMAND git -C ${SOURCE} rev-parse --show-toplevel
  OUTPUT_VARIABLE top OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
# A tree inside of another repository is not that one's.
if(NOT failed AND top STREQUAL SOURCE)
  set(commit ${described})
endif()
file(CONFIGURE OUTPUT ${HEADER} CONTENT "#define OSTRAND_COMMIT \"@commit@\"\n" @ONLY)
