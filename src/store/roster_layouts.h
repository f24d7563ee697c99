#pragma once
// The files of the suite's timetable system in the roster folder. They belong to that system:
// this one reads the staff timetables, frees periods in them and prints them, and never
// creates a file there. The formats are binding to the byte; fields this system has no use
// for are named by position and kept as they stand.

#include "store/layout.h"

namespace korvel::store {

// Cells of a timetable record, one period of the cycle each, day-major.
inline constexpr int kRosterCells = 143;
inline constexpr int kRosterCellWidth = 15;
inline constexpr int kRosterPeriodTimes = 46;

// ---- skl_dta_random.txt of the roster folder: the school's set-up, record 1 ---------------
inline constexpr Field kRosterSchoolFields[] = {
    text("RS_DAE", 0, 2),       // days in the cycle, as text
    text("RS_PERIODES", 2, 2),  // periods a day, as text
    text("RS_SKOOL", 4, 5),
    text("RS_NR1", 9, 2),
    text("RS_NR2", 11, 2, 3),
    text("RS_NR3", 17, 2, 3),
    text("RS_NR4", 23, 2, 7),
    text("RS_NR5", 37, 2, 7),
    text("RS_NAME", 51, 20, 7),
    text("RS_TYE", 191, 11, kRosterPeriodTimes),  // the time text of each period
};
inline constexpr Layout RSTR_SKL{"RSTR_SKL", "skl_dta_random.txt", 697, kRosterSchoolFields};

// ---- Prs_Dta_random.txt: the staff of the timetable --------------------------------------
inline constexpr Field kRosterStaffFields[] = {
    text("RP_POS_NR", 0, 5),  text("RP_VAN", 5, 30),   text("RP_NAME", 35, 30),
    text("RP_VRLTR", 65, 5),  raw("RP_GETAL1", 70, 8), int16("RP_GETAL2", 78),
    text("RP_TEKS", 80, 250),
};
inline constexpr Layout RSTR_PRS{"RSTR_PRS", "Prs_Dta_random.txt", 330, kRosterStaffFields};

// ---- rstr_vak_random.txt: the subject periods -------------------------------------------
inline constexpr Field kRosterSubjectFields[] = {
    text("RV_SLEUTEL", 0, 5),  text("RV_NAAM", 5, 30),  raw("RV_GETAL1", 35, 4),
    int16("RV_GETAL2", 39),    text("RV_MERK1", 41, 1), text("RV_TEKS", 42, 3),
    text("RV_KODE", 45, 5, 4), int16("RV_GETAL3", 65),  text("RV_MERK2", 67, 1),
};
inline constexpr Layout RSTR_VAK{"RSTR_VAK", "rstr_vak_random.txt", 68, kRosterSubjectFields};

// ---- Pos_Dta_random.txt and Rstr_Lrdr_random.txt: the timetable of a post or a group -----
inline constexpr Field kRosterTimetableFields[] = {
    text("RT_POS_NR", 0, 5),
    text("RT_NAAM", 5, 30),
    text("RT_SEL", 35, kRosterCellWidth, kRosterCells),
    int16("RT_GETAL", 2180),
};
inline constexpr Layout RSTR_POS{"RSTR_POS", "Pos_Dta_random.txt", 2182, kRosterTimetableFields};
inline constexpr Layout RSTR_LRDR{"RSTR_LRDR", "Rstr_Lrdr_random.txt", 2182,
                                  kRosterTimetableFields};

// ---- Kls_Dta_random.txt: the classes, unread here ----------------------------------------
inline constexpr Field kRosterClassFields[] = {
    raw("RK_DATA", 0, 57),
};
inline constexpr Layout RSTR_KLS{"RSTR_KLS", "Kls_Dta_random.txt", 57, kRosterClassFields};

static_assert(check_layout(RSTR_SKL));
static_assert(check_layout(RSTR_PRS));
static_assert(check_layout(RSTR_VAK));
static_assert(check_layout(RSTR_POS));
static_assert(check_layout(RSTR_LRDR));
static_assert(check_layout(RSTR_KLS));

// In the order "*" opens them.
inline constexpr const Layout* kRosterLayouts[] = {&RSTR_SKL, &RSTR_PRS,  &RSTR_VAK,
                                                   &RSTR_POS, &RSTR_LRDR, &RSTR_KLS};

}  // namespace korvel::store
