# Tests of the address and family form and the banking form.
korvel_add_test(test_detail_entry_details
    SOURCES ${CMAKE_CURRENT_LIST_DIR}/test_sk412_prg.cpp ${CMAKE_CURRENT_LIST_DIR}/test_sk413_prg.cpp
    LIBS korvel_staff Qt6::Core)

korvel_add_test(test_detail_forms
    SOURCES ${CMAKE_CURRENT_LIST_DIR}/test_detail_forms.cpp
    LIBS korvel_staff_forms Qt6::Test)
