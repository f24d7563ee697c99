#pragma once
// The disk layout of every record file of the staff side. These formats are shared with the
// suite's other programs and are binding to the byte.

#include "store/layout.h"

namespace korvel::store {

// ---- prs_alg_random.txt: the staff master record ----------------------------------------
inline constexpr Field kPrsalgFields[] = {
    text("PA_POS_NR", 0, 5),     text("PA_AKTIEF", 5, 1),       text("PA_VAN", 6, 30),
    text("PA_NAME", 36, 30),     text("PA_TITEL", 66, 5),       text("PA_N_VAN", 71, 30),
    text("PA_PERSAL", 101, 10),  text("PA_GESLAG", 111, 1),     text("PA_ID_NR", 112, 13),
    date("PA_G_DATUM", 125),     text("PA_HWLK_ST", 133, 1),    text("PA_BRD_WNR", 134, 1),
    text("PA_UN_NAAM", 135, 30), text("PA_OD_BL", 165, 1),      text("PA_RAS", 166, 5),
    text("PA_TAAL", 171, 5),     text("PA_GEBREK", 176, 5),     text("PA_P_T", 181, 1),
    text("PA_TAALSMB", 182, 5),  int16("PA_REQV", 187),         text("PK_KLAS_NR", 189, 5),
    text("PK_REG_KLS", 194, 5),  text("PA_P_ADR1", 199, 25),    text("PA_P_ADR2", 224, 25),
    text("PA_P_ADR3", 249, 25),  text("PA_P_KODE", 274, 4),     text("PA_H_ADR1", 278, 25),
    text("PA_H_ADR2", 303, 25),  text("PA_H_ADR3", 328, 25),    text("PA_H_KODE", 353, 4),
    text("PA_T_HUIS", 357, 15),  text("PA_T_WERK", 372, 15),    text("PA_T_SEL", 387, 12),
    text("PA_T_ANDER", 399, 15), text("PA_H_TAAL", 414, 1),     text("PA_KERK", 415, 5),
    text("PA_EPOS", 420, 50),    int16("PA_ICT_LV", 470),       text("PA_MAN_VR", 472, 30),
    text("PA_MV_ID", 502, 13),   text("PA_MV_HTL", 515, 15),    text("PA_MV_EPS", 530, 50),
    text("PA_MV_WTL", 580, 15),  text("PA_MV_SEL", 595, 12),    text("PA_MV_ATL", 607, 15),
    text("PM_FONDS", 622, 30),   text("PM_F_NR", 652, 20),      text("PM_F_LID", 672, 30),
    text("PM_F_ID", 702, 13),    text("PM_F_KNM", 715, 30),     text("PM_F_KNR", 745, 15),
    text("PL_KIND", 760, 30, 6), date("PL_GDTM", 940, 6),       text("PB_BNK_NM", 988, 30),
    text("PB_BNK_NR", 1018, 15), text("PB_TEL_NR", 1033, 15),   text("PB_FAX_NR", 1048, 15),
    text("PB_KONTAK", 1063, 30), text("PB_REK_TPE", 1093, 10),  text("PB_REK_NR", 1103, 15),
    text("PB_TAX_NR", 1118, 15), text("PB_KONTRAK", 1133, 1),   int16("PB_SALARIS", 1134),
    text("PB_TAX_DED", 1136, 1), int16("PB_TAX_AMT", 1137),     text("PB_TJK_KON", 1139, 1),
    text("PB_REK_HR", 1140, 30), text("PK_GRDE", 1170, 30, 9),  text("PK_WAAR", 1440, 30, 9),
    int16("PK_JAAR", 1710, 9),   text("PK_SHA_V", 1728, 30, 9), text("PK_SHA_T", 1998, 1, 9),
    text("PA_DPT_NR", 2007, 15), text("PA_FOR_NR", 2022, 15),   date("PA_DTM_AAN", 2037),
    date("PA_DTM_SKL", 2045),    text("PA_WAAR", 2053, 50, 11), text("PA_BSK", 2603, 30, 11),
    text("PA_TPA", 2933, 1, 11), date("PA_DTM", 2944, 11),      int16("PO_JRE_SKL", 3032),
    int16("PO_JRE_PRV", 3034),   int16("PO_JRE_BTE", 3036),     int16("PO_JRE_OND", 3038),
    int16("PO_JRE_DPT", 3040),   int16("PO_JRE_A_H", 3042),     int16("PO_JRE_SAH", 3044),
    int16("PO_JRE_HF", 3046),    text("PO_SKL", 3048, 30, 6),   date("PO_VAN", 3228, 6),
    date("PO_TOT", 3276, 6),     int16("PO_OND", 3324, 6),      text("PO_VAK", 3336, 8, 11),
    text("PO_GRD", 3424, 3, 11), int16("PO_VJR", 3457, 11),     text("PO_AKT", 3479, 30, 6),
    text("PO_SPN", 3659, 20, 6), int16("PO_BJR", 3779, 6),      text("PO_PLK", 3791, 30, 6),
    text("PO_POS", 3971, 20, 6), int16("PO_PJR", 4091, 6),
};
inline constexpr Layout PRSALG{"PRSALG", "prs_alg_random.txt", 4103, kPrsalgFields};

// ---- skl_dta_random.txt: the school record (record 1 only) ------------------------------
inline constexpr Field kSklFields[] = {
    text("SD_SKOOL", 0, 50),
    text("SD_KRING", 50, 25),
    text("SD_SNTR_NM", 75, 30),
    text("SD_SNTR_NR", 105, 10),
    text("SD_ADRES1", 115, 30),
    text("SD_ADRES2", 145, 30),
    text("SD_ADRES3", 175, 30),
    text("SD_KODE", 205, 4),
    text("SD_FOON", 209, 15),
    text("SD_FAKS", 224, 15),
    text("SD_PROV", 239, 2),
    raw("SD_T_NR", 241, 4),  // int32 or single of another system: kept byte for byte
    text("SD_ST", 245, 3, 21),
    int16("SD_ST_NR", 308, 21),
    text("SD_NME", 350, 3, 21),
    int16("SD_TME_OUT", 413),
    text("SD_T_O_TPE", 415, 1),
    text("SD_DIST_NR", 416, 5),
    text("SD_DISTRIK", 421, 25),
    text("SD_RES_446", 446, 4),
    text("SD_USE_CDE", 450, 5),
    int16("SD_OUDSTES", 455),
    text("SD_EMAIL", 457, 50),
    int16("SD_AKA_MAX", 507),
    int16("SD_S_T_MAX", 509),
    int16("SD_N_A_MAX", 511),
    text("SD_STREEK", 513, 25),
    text("SD_WYK", 538, 25),
    text("SD_OD_LOGO", 563, 1),
    text("SX_HOOF", 564, 30),
    text("SX_S_ADJ1", 594, 30),
    text("SX_S_ADJ2", 624, 30),
    text("SX_ADJ", 654, 30),
    text("SX_DPO", 684, 30),
    text("SX_SVO_NME", 714, 30),
    text("SX_SVO_T_A", 744, 30),
    text("SX_SVO_T_E", 774, 30),
    text("SX_DEPT_NM", 804, 50),
    text("SX_USER1", 854, 50),
    text("SX_SEL_1", 904, 12),
    text("SX_USER2", 916, 50),
    text("SX_SEL_2", 966, 12),
    int16("SX_EXPRESS", 978),
    text("SD_S_ADR1", 980, 25),
    text("SD_S_ADR2", 1005, 25),
    text("SD_S_ADR3", 1030, 25),
    text("SD_S_KODE", 1055, 4),
    text("SD_FOON_K", 1059, 5),
    text("SD_FAKS_K", 1064, 5),
    text("SX_TTL_HF", 1069, 5),
    text("SX_VRL_HF", 1074, 5),
    text("SX_FNK_HF", 1079, 5),
    text("SX_FNR_HF", 1084, 15),
    text("SX_SNK_HF", 1099, 5),
    text("SX_SNR_HF", 1104, 15),
};
inline constexpr Layout SKL{"SKL", "skl_dta_random.txt", 1119, kSklFields};

// ---- lurits_random.txt: identity number to LURITS number ---------------------------------
inline constexpr Field kLuritsFields[] = {
    text("LU_ID_NR", 0, 13),
    text("LU_NR", 13, 9),
    int16("LU_VAL1", 22),
    int16("LU_VAL2", 24),
};
inline constexpr Layout PRSLURITS{"PRSLURITS", "lurits_random.txt", 26, kLuritsFields};

// ---- prs_add_random.txt: further particulars ---------------------------------------------
inline constexpr Field kPrsaddFields[] = {
    text("PD_POS_NR", 0, 5),     int16("PD_POSVLAK", 5),        text("PD_NOEMNAAM", 7, 25),
    text("PD_PASPOORT", 32, 15), text("PD_WERKPERMIT", 47, 15), text("PD_ONDERWYS_VLAK", 62, 1),
    int16("PD_KATEGORIE", 63),   text("PD_UNIE_NR", 65, 30),    text("PD_CEMIS", 95, 16),
    int16("PD_KW_PROF", 111, 9), int16("PD_KW_AKAD", 129, 9),   int16("PD_KW_DETAIL", 147, 9),
    text("PD_RES", 165, 30),
};
inline constexpr Layout PRSADD{"PRSADD", "prs_add_random.txt", 195, kPrsaddFields};

// ---- prs_nme_random.txt: names and teaching load, a mirror of the master file -----------
inline constexpr Field kPrsnmeFields[] = {
    text("PN_POS_NR", 0, 5),    text("PN_NAAM", 5, 30),     text("PN_KLAS1", 35, 5),
    text("PN_KLAS2", 40, 5),    text("PN_KLAS3", 45, 5),    text("PN_STD", 50, 3, 21),
    text("PN_VAK", 113, 5, 21), text("PN_KMB", 218, 3, 21),
};
inline constexpr Layout PRSNME{"PRSNME", "prs_nme_random.txt", 281, kPrsnmeFields};

// ---- prs_vak_random.txt: subjects; the grids are 11 by 6, first index fastest ------------
inline constexpr Field kPrsvakFields[] = {
    text("PV_POS_NR", 0, 5),
    grid(text("PV_VAK", 5, 8, 66), 11),
    grid(text("PV_GRD", 533, 3, 66), 11),
    grid(int16("PV_JR1", 731, 66), 11),
    grid(int16("PV_JR2", 863, 66), 11),
    text("PV_VAK2", 995, 8, 11),
    text("PV_GRD2", 1083, 3, 11),
    int16("PV_JR3", 1116, 11),
    int16("PV_JR4", 1138, 11),
};
inline constexpr Layout PRSVAK{"PRSVAK", "prs_vak_random.txt", 1160, kPrsvakFields};

// ---- prs_afw_random.txt: a year of attendance marks, slots 0 to 370 by day of the year ---
inline constexpr int kAttendanceSlots = 371;
inline constexpr Field kPrsafwFields[] = {
    text("PF_POS_NR", 0, 5),
    text("PF_DAG", 5, 1, kAttendanceSlots),
    text("PF_REDE", 376, 2, kAttendanceSlots),
};
inline constexpr Layout PRSAFW{"PRSAFW", "prs_afw_random.txt", 1118, kPrsafwFields};

// ---- prs_lne_random.txt: one record a staff member a month -------------------------------
inline constexpr Field kPrslneFields[] = {
    text("PL_POS_NR", 0, 5),      text("POS_BSK", 5, 50),     int16("PL_MAAND", 55),
    int16("PL_SALARIS", 57),      int16("PL_OORTYD", 59),     int16("PL_BONUS", 61),
    text("pl_i_teks", 63, 30, 4), int16("PL_I_BDRG", 183, 4), int16("PL_PENS", 191),
    int16("PL_WVF", 193),         int16("PL_TAX", 195),       text("pl_u_teks", 197, 30, 4),
    int16("pl_u_bdrg", 317, 4),
};
inline constexpr Layout PRSLNE{"PRSLNE", "prs_lne_random.txt", 325, kPrslneFields};

// ---- sbi_kde_random.txt: reasons for absence; the record number is the reason number -----
inline constexpr Field kPrssbiFields[] = {
    text("SBI_TIPE", 0, 25),
    text("SBI_BESK", 25, 25),
};
inline constexpr Layout PRSSBI{"PRSSBI", "sbi_kde_random.txt", 50, kPrssbiFields};

// ---- bhr_lgm_random.txt: governing body members; reserved fields kept byte for byte ------
inline constexpr Field kBhrlgmFields[] = {
    text("BL_TIPE", 0, 1),          text("BL_POS_NR", 1, 5),       text("BL_VAN", 6, 30),
    text("BL_NAME", 36, 30),        text("BL_VRLTR", 66, 5),       text("BL_TITEL", 71, 5),
    text("BL_AKTIEF", 76, 1),       text("BL_RAS", 77, 5),         text("BL_GESLAG", 82, 1),
    text("BL_HWLK_ST", 83, 20),     text("BL_H_TAAL", 103, 20),    text("BL_TAAL2", 123, 20),
    text("BL_T_KODE", 143, 5),      text("BL_T_NR", 148, 20),      text("BL_SEL", 168, 20),
    text("BL_F_KODE", 188, 5),      text("BL_F_NR", 193, 20),      text("BL_EPOS", 213, 50),
    text("BL_P_ADR1", 263, 30),     text("BL_P_ADR2", 293, 30),    text("BL_P_ADR3", 323, 30),
    text("BL_P_KODE", 353, 4),      text("BL_RES_357", 357, 100),  text("BL_RES_457", 457, 20),
    text("BL_RES_477", 477, 5),     text("BL_RES_482", 482, 20),   text("BL_RES_502", 502, 30),
    text("BL_RES_532", 532, 30),    text("BL_RES_562", 562, 30),   text("BL_RES_592", 592, 4),
    text("BL_RES_596", 596, 10),    text("BL_RES_606", 606, 30),   text("BL_RES_636", 636, 30),
    text("BL_RES_666", 666, 5),     text("BL_RES_671", 671, 20),   text("BL_RES_691", 691, 30),
    text("BL_GEBREK", 721, 10),     date("BL_G_DATUM", 731),       byte("BL_SA_BURGER", 739),
    text("BL_LAND", 740, 30),       text("BL_ID_NR", 770, 13),     text("BL_PASPOORT", 783, 20),
    text("BL_ONDERRIG", 803, 1),    text("BL_HOEDANIG", 804, 1),   int16("BL_LID_AKTIEF", 805),
    date("BL_DTM_VERKIES", 807),    raw("BL_RES_815", 815, 4),     raw("BL_RES_819", 819, 4),
    raw("BL_RES_823", 823, 4),      raw("BL_RES_827", 827, 4),     raw("BL_RES_831", 831, 4),
    raw("BL_RES_835", 835, 4),      text("BL_RES_839", 839, 100),  date("BL_DTM_WYSIG", 939),
    text("BL_GEBRUIKER", 947, 100), text("BL_RES_1047", 1047, 30),
};
inline constexpr Layout BHRLGM{"BHRLGM", "bhr_lgm_random.txt", 1077, kBhrlgmFields};

// ---- the other school files of the general year folder (record 1 only) ------------------
// Their fields have no names in this system; they are named by position.
inline constexpr Field kSkladdFields[] = {
    text("SA_TEKS1", 0, 30), text("SA_TEKS2", 30, 30),   text("SA_TEKS3", 60, 20),
    int16("SA_GETAL1", 80),  int16("SA_GETALLE", 82, 7), date("SA_DATUM1", 96),
    date("SA_DATUM2", 104),  date("SA_DATUMS1", 112, 5), date("SA_DATUMS2", 152, 5),
    int16("SA_GETAL2", 192), int16("SA_GETAL3", 194),    int16("SA_GETAL4", 196),
};
inline constexpr Layout SKLADD{"SKLADD", "skl_add_random.txt", 198, kSkladdFields};

inline constexpr Field kSklhbFields[] = {
    text("SH_TEKS", 0, 8114),
};
inline constexpr Layout SKLHB{"SKLHB", "skl_h_b_random.txt", 8114, kSklhbFields};

inline constexpr Field kSkleposFields[] = {
    text("SE_REKENING", 0, 20, 6),    text("SE_ADRES", 120, 100, 6),
    text("SE_BEDIENER", 720, 100, 6), text("SE_DETAIL", 1320, 100, 6),
    int16("SE_GETAL", 1920),
};
inline constexpr Layout SKLEPOS{"SKLEPOS", "skl_epos_random.txt", 1922, kSkleposFields};

inline constexpr Field kSbpFields[] = {
    text("SP_GRAAD", 0, 3),
    text("SP_KLAS", 3, 3),
    text("SP_ONNIE", 6, 30),
    int16("SP_SEL", 36, 318),
};
inline constexpr Layout SBP{"SBP", "sbp_random.txt", 672, kSbpFields};

inline constexpr Field kSbp2018Fields[] = {
    text("SP_GRAAD", 0, 3), text("SP_KLAS", 3, 3),  text("SP_ONNIE", 6, 30),
    raw("SP_WEEK", 36, 4),  int16("SP_SEL", 40, 6),
};
inline constexpr Layout SBP2018{"SBP2018", "sbp2018_random.txt", 52, kSbp2018Fields};

// ---- user_lock_record.txt: the advisory lock table of the general year folder ------------
inline constexpr Field kLockFields[] = {
    text("LK_GEBRUIKER", 0, 50), date("LK_DATUM", 50), text("LK_STELSEL", 58, 20),
    text("LK_SOORT", 78, 10),    int16("LK_JAAR", 88), text("LK_IDENTIFIKASIE", 90, 50),
};
inline constexpr Layout LOCK{"LOCK", "user_lock_record.txt", 140, kLockFields};

// ---- Audit_Trail.txt: the workstation's log of forms and locks ---------------------------
inline constexpr Field kAuditFields[] = {
    text("AT_GEBRUIKER", 0, 50), date("AT_DATUM", 50),          text("AT_TYD", 58, 10),
    text("AT_GEBEURE", 68, 50),  text("AT_VORIGE", 118, 50),    text("AT_ADMIN", 168, 30),
    text("AT_FONDSE", 198, 30),  text("AT_PERSONEEL", 228, 30),
};
inline constexpr Layout AUDIT{"AUDIT", "Audit_Trail.txt", 258, kAuditFields};

static_assert(check_layout(PRSALG));
static_assert(check_layout(SKL));
static_assert(check_layout(PRSLURITS));
static_assert(check_layout(PRSADD));
static_assert(check_layout(PRSNME));
static_assert(check_layout(PRSVAK));
static_assert(check_layout(PRSAFW));
static_assert(check_layout(PRSLNE));
static_assert(check_layout(PRSSBI));
static_assert(check_layout(BHRLGM));
static_assert(check_layout(SKLADD));
static_assert(check_layout(SKLHB));
static_assert(check_layout(SKLEPOS));
static_assert(check_layout(SBP));
static_assert(check_layout(SBP2018));
static_assert(check_layout(LOCK));
static_assert(check_layout(AUDIT));

// Every layout, for look-up by code (the command line's dump, the tests).
inline constexpr const Layout* kAllLayouts[] = {
    &PRSALG, &PRSADD, &PRSVAK, &PRSNME,  &BHRLGM, &PRSAFW,  &PRSLNE, &PRSSBI, &PRSLURITS,
    &SKL,    &SKLADD, &SKLHB,  &SKLEPOS, &SBP,    &SBP2018, &LOCK,   &AUDIT,
};

constexpr const Layout* layout_by_code(std::string_view code) {
    for (const Layout* l : kAllLayouts) {
        if (l->code == code) {
            return l;
        }
    }
    return nullptr;
}

}  // namespace korvel::store
