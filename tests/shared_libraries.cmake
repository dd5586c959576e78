# What only shared libraries can show.

# Another platform library under the same name, in place of the stand-in: it comes first among the
# libraries that the program needs, and the parser takes the one that is loaded.
add_library(other-platform SHARED other_platform.c)
target_include_directories(other-platform PRIVATE ${CMAKE_SOURCE_DIR}/platform/include)
set_target_properties(
  other-platform PROPERTIES OUTPUT_NAME orvex-platform
                            LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/other-platform)
add_executable(other_platform_test other_platform_test.c)
target_include_directories(other_platform_test PRIVATE ${CMAKE_SOURCE_DIR}/include)
target_link_libraries(other_platform_test PRIVATE $<TARGET_FILE:other-platform>
                                                  $<TARGET_FILE:orvex-parse>)
set_target_properties(other_platform_test PROPERTIES INSTALL_RPATH
                                                     "$ORIGIN/../other-platform;$ORIGIN/../lib")
add_dependencies(other_platform_test other-platform orvex-parse)
add_test(NAME other_platform_test COMMAND other_platform_test)

# What the shared library exports and needs; a sanitizer adds names of its own.
if(NOT ORVEX_SANITIZE)
  add_test(NAME binary_interface_test
           COMMAND ${CMAKE_CURRENT_SOURCE_DIR}/binary_interface_test.sh $<TARGET_FILE:orvex-parse>)
endif()
