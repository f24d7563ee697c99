# The staff lists, the print menu and the print command on the demo tree.
korvel_add_test(test_staff_lists
    SOURCES test_main_env.cpp test_staff_lists.cpp
    LIBS korvel_staff_lists korvel_dialogs)
