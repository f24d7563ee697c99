#include "report_fixture.h"

// Registered before main runs: every report test program has a GUI application.
static ::testing::Environment* const gui_environment =
    ::testing::AddGlobalTestEnvironment(new korvel::reports::testing::GuiEnvironment);
