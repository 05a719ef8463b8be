# Tests of the main window. Every program has a directory of its own with a
# copy of orvex/ beside it: Manager looks for its schema there, and the tests
# put their own schema and default configurations over that copy.

add_library(tst_manager_support STATIC
  ${CMAKE_CURRENT_LIST_DIR}/tst_manager_support.h
  ${CMAKE_CURRENT_LIST_DIR}/tst_manager_support.cpp)
target_link_libraries(tst_manager_support
  PUBLIC orvex_app orvex_testsupport Qt5::Xml Qt5::Test) # variants of the schema are made with QDom
target_compile_definitions(tst_manager_support PRIVATE
  ORVEX_TEST_DATA_DIR="${CMAKE_SOURCE_DIR}/tests/data"
  ORVEX_SOURCE_DATA_DIR="${CMAKE_SOURCE_DIR}/data/orvex")

foreach(unit startup window open save search editall)
  orvex_add_test(tst_manager_${unit}
    SOURCES ${CMAKE_CURRENT_LIST_DIR}/tst_manager_${unit}.cpp
    LIBS tst_manager_support orvex_app GUI OWN_DIR)
endforeach()

# The command line is fixed when QApplication is built, so each case of it is
# a run of its own; without an argument the program tests the plain start.
orvex_add_test(tst_manager_cmdline
  SOURCES ${CMAKE_CURRENT_LIST_DIR}/tst_manager_cmdline.cpp
  LIBS tst_manager_support orvex_app GUI OWN_DIR)
foreach(case older-file empty-argument missing-file)
  add_test(NAME tst_manager_cmdline_${case} COMMAND tst_manager_cmdline ${case})
  set_tests_properties(tst_manager_cmdline_${case} PROPERTIES
    ENVIRONMENT QT_QPA_PLATFORM=offscreen TIMEOUT 600)
endforeach()
