# The new-configuration and documentation dialogs, included from this
# folder's CMakeLists.txt.
orvex_add_test(tst_dialoginfo SOURCES ${CMAKE_CURRENT_LIST_DIR}/tst_dialoginfo.cpp LIBS orvex_ui GUI)
orvex_add_test(tst_dialognew SOURCES ${CMAKE_CURRENT_LIST_DIR}/tst_dialognew.cpp LIBS orvex_ui GUI)
