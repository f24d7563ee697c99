# The printing side of the ui: the printer device and print preview, the print target's host
# and progress window, and the form kies_drukker.
add_library(korvel_ui_print STATIC
    print_printer_device.cpp
    print_target_host.cpp
    kies_drukker_form.cpp
)
target_include_directories(korvel_ui_print PUBLIC ${PROJECT_SOURCE_DIR}/src)
target_link_libraries(korvel_ui_print PUBLIC korvel_reports Qt6::Widgets Qt6::PrintSupport)

# The forms of the staff lists: the print menu and the selection form.
add_library(korvel_ui_reports STATIC
    staff_list_forms.cpp
)
target_include_directories(korvel_ui_reports PUBLIC ${PROJECT_SOURCE_DIR}/src)
target_link_libraries(korvel_ui_reports PUBLIC korvel_ui_print korvel_staff_lists korvel_ui Qt6::Widgets)
