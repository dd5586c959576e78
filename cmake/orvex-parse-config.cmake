# find_package(orvex-parse): the targets orvex-parse::orvex-parse and orvex-parse::orvex-platform.
include(${CMAKE_CURRENT_LIST_DIR}/orvex-parse-targets.cmake)
# The archives are C++ inside, but programs that link them need no C++ compiler and run-time library.
foreach(target orvex-parse::orvex-parse orvex-parse::orvex-platform)
  get_target_property(configurations ${target} IMPORTED_CONFIGURATIONS)
  foreach(configuration ${configurations})
    set_property(TARGET ${target} PROPERTY IMPORTED_LINK_INTERFACE_LANGUAGES_${configuration} C)
  endforeach()
endforeach()
