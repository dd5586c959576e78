# Writes HEADER with RELEASE and the build identity of SOURCE_DIR, or BUILD if that is not empty;
# writes it only on a change.
set(archived $Format:%H$)  # the revision, in an archive made by git

if("${BUILD}" STREQUAL "" AND archived MATCHES "^[0-9a-f]+$")
  string(SUBSTRING ${archived} 0 12 BUILD)
endif()
# Its own repository, not one that happens to be around it.
if("${BUILD}" STREQUAL "" AND EXISTS ${SOURCE_DIR}/.git)
  find_program(git git)
  if(git)
    execute_process(
      COMMAND ${git} --git-dir=${SOURCE_DIR}/.git --work-tree=${SOURCE_DIR} describe --always --dirty --abbrev=12 --exclude=*
      OUTPUT_VARIABLE BUILD OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
  endif()
endif()
if("${BUILD}" STREQUAL "")
  set(BUILD unknown)
endif()
string(LENGTH "${BUILD}" length)
if(length GREATER 47 OR NOT "${BUILD}" MATCHES "^[A-Za-z0-9 .,:;+~/@_()-]+$")
  message(FATAL_ERROR "A build identity has up to 47 letters, digits, spaces and characters of "
                      ".,:;+~/@_()-, not '${BUILD}'")
endif()

file(CONFIGURE OUTPUT ${HEADER} CONTENT [[
#define ORVEX_RELEASE "@RELEASE@"
#define ORVEX_BUILD "@BUILD@"
]] @ONLY)
