# Tests of the remarks of a person.
korvel_add_test(test_remarks
    SOURCES test_remarks.cpp
    LIBS korvel_staff)

korvel_add_test(test_remarks_form
    SOURCES test_remarks_form.cpp
    LIBS korvel_staff_forms)
