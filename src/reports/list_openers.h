#pragma once
// The forms behind the print menu's blank forms, tuition list and qualification list buttons.

namespace korvel::shell {
class Session;
}

namespace korvel::reports {

class PrintJob;
class PrintMenu;
class PrintTargetHost;

inline constexpr int kBlankFormsButton = 9;
inline constexpr int kTuitionListButton = 12;
inline constexpr int kQualificationListButton = 13;

// The job and host must outlive the menu.
void register_form_lists(PrintMenu& menu, shell::Session& session, PrintJob& job,
                         PrintTargetHost* host);

}  // namespace korvel::reports
