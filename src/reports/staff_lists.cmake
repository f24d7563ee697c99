# The staff lists and the print menu: they read the session, so they sit above the shell.
add_library(korvel_staff_lists STATIC
    school_report.cpp
    sk421_prg.cpp
    staff_kies_druk.cpp
    cli_print.cpp
)
target_include_directories(korvel_staff_lists PUBLIC ${PROJECT_SOURCE_DIR}/src)
target_link_libraries(korvel_staff_lists PUBLIC korvel_reports korvel_shell)
