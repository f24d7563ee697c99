# Sources of the remarks of a person.
target_sources(korvel_staff PRIVATE ${CMAKE_CURRENT_LIST_DIR}/remarks.cpp)
target_sources(korvel_staff_forms PRIVATE ${CMAKE_CURRENT_LIST_DIR}/remarks_form.cpp)
