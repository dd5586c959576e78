# Writes HEADER with the release and the source revision of SOURCE_DIR; writes it only on a change.
set(revision unknown)
find_program(git git)
if(git)
  execute_process(
    COMMAND ${git} -C ${SOURCE_DIR} describe --always --dirty --abbrev=12
    OUTPUT_VARIABLE described OUTPUT_STRIP_TRAILING_WHITESPACE
    ERROR_QUIET
    RESULT_VARIABLE status)
  if(status EQUAL 0)
    string(SUBSTRING "${described}" 0 47 revision)
  endif()
endif()
file(CONFIGURE OUTPUT ${HEADER} CONTENT [[
#define ORVEX_RELEASE "@RELEASE@"
#define ORVEX_BUILD "@revision@"
]] @ONLY)
