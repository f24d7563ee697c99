# Sources of the address and family form and the banking form.
target_sources(korvel_staff PRIVATE ${CMAKE_CURRENT_LIST_DIR}/sk412_prg.cpp ${CMAKE_CURRENT_LIST_DIR}/sk413_prg.cpp)
target_sources(korvel_staff_forms PRIVATE ${CMAKE_CURRENT_LIST_DIR}/detail_forms.cpp)
