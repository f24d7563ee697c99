// The demo data tree: HOëRSKOOL DUINEVELD, an invented Afrikaans-medium high school on the
// West Coast, with forty staff members, their companion records, a term or two of attendance,
// governing-body salaries, the default absence reasons, LURITS numbers and a governing body.
//
// Everything goes through the record store, exactly as the forms write it. The data come from
// the fixed tables below and from one fixed-seed Mersenne Twister, whose output the C++
// standard fixes to the bit; the numbers are cut to range with our own arithmetic, since the
// standard library's distributions differ from one library to the next. No clock is read:
// every date is counted from the year asked for.

#include "shell/demo_tree.h"

#include "shell/demo_roster.h"

#include "store/default_reasons.h"

#include <xlsxwriter.h>

#include <QDate>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QMap>

#include <algorithm>
#include <array>
#include <cstdint>
#include <functional>
#include <random>
#include <vector>

#include "platform/codepage.h"
#include "platform/drive_map.h"
#include "platform/winpath.h"
#include "shell/dbf_table_writer.h"
#include "shell/demo_payroll.h"
#include "shell/folders.h"
#include "shell/helpers.h"
#include "shell/session.h"
#include "store/quoted_text.h"
#include "store/record_layouts.h"

namespace korvel::shell {

namespace {

using store::Code;
using store::Record;

QString u8(const char* text) {
    return QString::fromUtf8(text);
}

// ---- the school -------------------------------------------------------------------------

constexpr const char* kSchoolName = "HOëRSKOOL DUINEVELD";
constexpr const char* kDialCode = "022";
constexpr const char* kSchoolPhone = "713 2450";
constexpr const char* kSchoolFax = "713 2451";
constexpr const char* kStaffDomain = "@hsduineveld.example";
constexpr const char* kHomeDomain = "@webpos.example";

// ---- the staff ----------------------------------------------------------------------------

struct Person {
    const char* post;
    char state;      // in the current year: ' ' active, '*' inactive, 'D' deleted
    bool afrikaans;  // the language the record was typed in
    const char* title;
    const char* names;
    const char* surname;
    const char* maiden;
    const char* known_as;
    bool male;
    char race;     // 'W', 'C' or 'B'
    int language;  // position in the home language list: 1, 2, 9 (isiXhosa), 10 (isiZulu)
    int age;       // in the current year
    int birth_month;
    int birth_day;
    const char* klas;  // PK_KLAS_NR: a class, blank, or "ADMIN", "PS", "PSS" for employees
    char paymaster;    // 'O' education department, 'B' governing body
    char tenure;       // 'P' permanent, 'T' temporary
    int reqv;          // 0 for employees
    int years_education;
    int years_school;
    int level;     // post level 1 to 4
    int category;  // highest qualification (educators) or personnel category (employees)
    const char* post_text;
    const char* subjects;  // "CODE:GRADE,...", codes of the subject code list
    char marital;          // 'G' married, 'O' unmarried, 'S' divorced
    int salary;            // whole rands a month, governing-body paid staff only
};

constexpr bool A = true;   // typed in Afrikaans
constexpr bool E = false;  // typed in English
constexpr bool M = true;
constexpr bool F = false;

// clang-format off
constexpr Person kStaff[] = {
    {"101", ' ', A, "MNR", "JACOBUS PETRUS", "DU TOIT", "", "KOBUS", M, 'W', 1, 56, 3, 14, "", 'O', 'P', 15, 33, 14, 4, 2, "HOOF", "2010:12", 'G', 0},
    {"102", ' ', A, "MEV", "ELSABé", "VAN DER MERWE", "LOUW", "ELSA", F, 'W', 1, 52, 7, 22, "", 'O', 'P', 15, 29, 18, 3, 2, "ADJUNKHOOF", "1010:12", 'G', 0},
    {"103", ' ', A, "MNR", "HENDRIK JOHANNES", "BOTHA", "", "HENNIE", M, 'W', 1, 49, 11, 2, "", 'O', 'P', 14, 26, 20, 3, 1, "ADJUNKHOOF", "3010:12", 'G', 0},
    {"104", ' ', A, "ME", "ANNA-MARI", "COETZéE", "", "ANNA-MARI", F, 'W', 1, 45, 1, 30, "12A", 'O', 'P', 14, 22, 12, 2, 1, "DEPARTEMENTSHOOF", "1010:12,1010:11", 'O', 0},
    {"105", ' ', E, "MR", "DAVID ALEXANDER", "MCKENZIE", "", "DAVID", M, 'W', 2, 47, 5, 9, "12B", 'O', 'P', 15, 23, 9, 2, 2, "DEPARTMENTAL HEAD", "1020:12,1020:11", 'G', 0},
    {"106", ' ', A, "MEV", "MARIETJIE SUSANNA", "STEYN", "PRETORIUS", "MARIETJIE", F, 'W', 1, 58, 9, 17, "11A", 'O', 'P', 13, 36, 25, 2, 1, "DEPARTEMENTSHOOF", "2010:11,2010:10", 'G', 0},
    {"107", ' ', A, "DR", "RENé ANDRé", "MéNIèRE", "", "RENé", M, 'W', 1, 44, 4, 3, "11B", 'O', 'P', 15, 18, 6, 1, 2, "ONDERWYSER", "3020:12,3020:11", 'G', 0},
    {"108", ' ', A, "ME", "LIEZL", "NEL", "", "LIEZL", F, 'W', 1, 34, 8, 26, "10A", 'O', 'P', 14, 11, 7, 1, 1, "ONDERWYSER", "4010:10,4010:11", 'G', 0},
    {"109", ' ', A, "MNR", "PIETER WILLEM", "JOUBERT", "", "PIET", M, 'W', 1, 38, 12, 11, "10B", 'O', 'P', 14, 15, 10, 1, 1, "ONDERWYSER", "4020:12,4020:10", 'O', 0},
    {"110", ' ', E, "MS", "SIPHOKAZI NOMVULA", "DLAMINI", "", "KAZI", F, 'B', 9, 31, 2, 19, "9A", 'O', 'P', 14, 8, 5, 1, 1, "EDUCATOR", "6010:9,6010:10", 'O', 0},
    {"111", ' ', A, "MNR", "JOHAN FRANCOIS", "LE ROUX", "", "JOHAN", M, 'W', 1, 41, 6, 28, "9B", 'O', 'P', 14, 17, 17, 1, 1, "ONDERWYSER", "2010:9,2010:12", 'G', 0},
    {"112", ' ', E, "MS", "CHANTELLE", "ADAMS", "", "CHANTELLE", F, 'C', 2, 29, 10, 5, "8A", 'O', 'T', 14, 5, 3, 1, 1, "EDUCATOR", "1020:8,1020:9", 'O', 0},
    {"113", ' ', A, "MEV", "ELMARIE", "KRUGER", "SMIT", "ELMARIE", F, 'W', 1, 50, 3, 8, "8B", 'O', 'P', 13, 27, 21, 1, 1, "ONDERWYSER", "5010:10,5010:11", 'G', 0},
    {"114", ' ', A, "MNR", "GERHARD", "VISSER", "", "GERHARD", M, 'W', 1, 36, 1, 12, "12C", 'O', 'P', 14, 13, 13, 1, 1, "ONDERWYSER", "6010:12,6010:11", 'G', 0},
    {"115", ' ', E, "MRS", "SUSAN ELIZABETH", "HENDRICKS", "JULIES", "SUE", F, 'C', 2, 43, 11, 23, "11C", 'O', 'P', 14, 20, 8, 1, 1, "EDUCATOR", "8030:11,8030:12", 'G', 0},
    {"116", ' ', A, "MNR", "WERNER", "ERASMUS", "", "WERNER", M, 'W', 1, 33, 7, 4, "10C", 'O', 'P', 14, 10, 4, 1, 1, "ONDERWYSER", "3010:10,3010:11", 'O', 0},
    {"117", ' ', A, "ME", "ANNELIE", "FOURIE", "", "ANNELIE", F, 'W', 1, 27, 5, 31, "9C", 'B', 'T', 14, 3, 3, 1, 1, "ONDERWYSER (BL)", "1010:9,1010:8", 'O', 18500},
    {"118", ' ', E, "MR", "SIPHO JOSEPH", "NDLOVU", "", "SIPHO", M, 'B', 10, 39, 9, 9, "", 'O', 'P', 15, 14, 6, 2, 2, "DEPARTMENTAL HEAD", "2020:12,2020:11", 'G', 0},
    {"119", '*', A, "MEV", "KARIN", "BASSON", "MOSTERT", "KARIN", F, 'W', 1, 61, 2, 2, "", 'O', 'P', 13, 38, 30, 1, 1, "ONDERWYSER", "8050:10,8050:11", 'G', 0},
    {"120", ' ', A, "MNR", "RIAAN", "SWART", "", "RIAAN", M, 'W', 1, 30, 8, 15, "8C", 'B', 'T', 14, 6, 2, 1, 1, "ONDERWYSER (BL)", "8020:10,8020:11", 'O', 17800},
    {"121", '*', A, "ME", "NICOLE", "JANSE VAN RENSBURG", "", "NICOLE", F, 'W', 1, 26, 12, 20, "", 'B', 'T', 13, 2, 2, 1, 1, "ONDERWYSER (BL)", "7020:8,7020:9", 'O', 16200},
    {"122", ' ', E, "MR", "GRANT", "WILLIAMS", "", "GRANT", M, 'W', 2, 48, 4, 27, "", 'O', 'P', 15, 24, 11, 2, 2, "DEPARTMENTAL HEAD", "5020:12,5030:12", 'S', 0},
    {"123", ' ', A, "MEV", "ILSE", "DU PLESSIS", "MARITZ", "ILSE", F, 'W', 1, 37, 1, 5, "12D", 'O', 'P', 14, 14, 9, 1, 1, "ONDERWYSER", "4020:11,4020:12", 'G', 0},
    {"124", ' ', A, "MNR", "DANIëL STEPHANUS", "POTGIETER", "", "DANIE", M, 'W', 1, 42, 9, 24, "10D", 'O', 'P', 15, 19, 12, 1, 2, "ONDERWYSER", "2010:10,2010:11", 'G', 0},
    {"125", ' ', E, "MS", "MEGAN", "SMITH", "", "MEGAN", F, 'W', 2, 28, 7, 14, "", 'O', 'T', 14, 4, 1, 1, 1, "EDUCATOR", "1020:8,1020:10", 'O', 0},
    {"1187", 'D', A, "MEV", "ALETTA CORNELIA", "MEYER", "DE VILLIERS", "LETTIE", F, 'W', 1, 54, 10, 30, "", 'O', 'P', 14, 31, 22, 1, 1, "ONDERWYSER", "1010:10", 'G', 0},
    {"1203", ' ', A, "MNR", "FRANS", "VAN WYK", "", "FRANS", M, 'W', 1, 46, 6, 6, "9D", 'O', 'P', 14, 21, 15, 1, 1, "ONDERWYSER", "8040:10,8040:11,8040:12", 'G', 0},
    {"1240", ' ', E, "MS", "ZANDILE PRECIOUS", "KHUMALO", "", "ZANDI", F, 'B', 10, 32, 3, 25, "8D", 'O', 'P', 14, 9, 4, 1, 1, "EDUCATOR", "7010:8,7010:9", 'O', 0},
    {"A001", ' ', A, "MEV", "HESTER JOHANNA", "MARAIS", "ROUX", "HETTIE", F, 'W', 1, 51, 4, 16, "ADMIN", 'O', 'P', 0, 24, 19, 1, 1, "SEKRETARESSE", "", 'G', 0},
    {"A002", ' ', A, "ME", "CHARMAINE", "FORTUIN", "", "CHARMAINE", F, 'C', 1, 44, 8, 8, "ADMIN", 'O', 'P', 0, 15, 11, 1, 1, "ADMINISTRATIEWE KLERK", "", 'O', 0},
    {"A003", ' ', E, "MRS", "ROSALIND", "PETERSEN", "JACOBS", "ROS", F, 'C', 2, 39, 2, 28, "ADMIN", 'B', 'P', 0, 9, 9, 1, 1, "RECEPTIONIST", "", 'G', 11200},
    {"A004", ' ', A, "MNR", "ABRAHAM", "KOOPMAN", "", "ABIE", M, 'C', 1, 58, 11, 11, "PS", 'O', 'P', 0, 29, 29, 1, 34, "TERREINOPSIGTER", "", 'G', 0},
    {"A005", ' ', A, "MNR", "JOHANNES", "APRIL", "", "JOHNNY", M, 'C', 1, 47, 6, 19, "PS", 'O', 'P', 0, 18, 18, 1, 13, "TERREINWERKER", "", 'G', 0},
    {"A006", ' ', E, "MR", "LUNGILE SONWABO", "MTHEMBU", "", "LUNGI", M, 'B', 9, 35, 1, 24, "PS", 'B', 'P', 0, 7, 7, 1, 13, "GENERAL WORKER", "", 'O', 7400},
    {"A007", ' ', A, "ME", "ANTOINETTE", "BEUKES", "", "TOINETTE", F, 'W', 1, 53, 10, 3, "PSS", 'O', 'P', 0, 21, 16, 1, 31, "BIBLIOTEEKASSISTENT", "", 'S', 0},
    {"A008", ' ', A, "MEV", "SOPHIA", "DAVIDS", "", "SOPHIA", F, 'C', 1, 60, 5, 5, "PS", 'O', 'P', 0, 33, 27, 1, 27, "SKOONMAAKSTER", "", 'G', 0},
    {"A009", ' ', A, "MNR", "CHRISTO", "MALAN", "", "CHRISTO", M, 'W', 1, 45, 3, 29, "PSS", 'B', 'P', 0, 12, 8, 1, 10, "IT-TEGNIKUS", "", 'G', 14600},
    {"A010", '*', E, "MS", "NOMBULELO", "FUNDA", "", "BULI", F, 'B', 9, 33, 7, 30, "PS", 'O', 'P', 0, 6, 6, 1, 27, "CLEANER", "", 'O', 0},
    {"A011", ' ', A, "MNR", "WILLEM", "JACOBS", "", "WILLIE", M, 'C', 1, 49, 12, 1, "PS", 'B', 'P', 0, 14, 14, 1, 33, "BUSBESTUURDER", "", 'G', 9800},
    {"A012", ' ', A, "ME", "JOLENE", "CLOETE", "", "JOLENE", F, 'C', 1, 24, 9, 13, "PSS", 'B', 'T', 0, 2, 2, 1, 28, "ONDERWYSASSISTENT", "", 'O', 6900},
};
// clang-format on

// Staff without a LURITS number yet: the newest appointments and one who left.
constexpr std::array<const char*, 3> kNoLurits = {"125", "A010", "A012"};

// The educator on maternity leave in the current year.
constexpr const char* kMaternity = "108";

// ---- the governing body -------------------------------------------------------------------

struct Member {
    const char* type;        // "4" parent, "2" educator, "6" learner representative
    const char* capacity;    // "1" chair, "2" deputy chair, "4" treasurer, "5" member
    const char* education;   // "1" below matric, "3" degree or diploma
    const char* staff_post;  // a member taken from a staff record; the rest of the row is unused
    const char* title;
    const char* names;
    const char* surname;
    bool male;
    char race;
    int language;
    int second_language;
    int age;
    int birth_month;
    int birth_day;
    char marital;
};

// clang-format off
constexpr Member kMembers[] = {
    {"4", "1", "3", nullptr, "MNR", "GERT JOHANNES", "LOMBARD", M, 'W', 1, 2, 48, 5, 17, 'G'},
    {"4", "2", "3", nullptr, "MEV", "SANDRA", "OLIVIER", F, 'W', 1, 2, 44, 9, 2, 'G'},
    {"4", "4", "3", nullptr, "MNR", "YUSUF", "EBRAHIM", M, 'C', 2, 1, 51, 1, 19, 'G'},
    {"2", "5", "3", "114", "", "", "", M, 'W', 0, 0, 0, 1, 1, ' '},
    {"6", "5", "1", nullptr, "MEJ", "MIA", "BOTES", F, 'W', 1, 2, 17, 6, 8, 'O'},
};
// clang-format on

// ---- lists the forms fill from ------------------------------------------------------------

// The eleven default absence reasons; the record number is the reason number.
constexpr const auto& kReasons = store::kDefaultReasons;
constexpr int kReasonAnnual = 1;
constexpr int kReasonSick = 2;
constexpr int kReasonMaternity = 5;
constexpr int kReasonFamily = 7;
constexpr int kReasonStudy = 10;

struct Town {
    const char* name;
    const char* code;
};
constexpr std::array<Town, 4> kTowns = {{
    {"DUINEVELD", "7399"},
    {"STRANDBAAI", "7401"},
    {"SOUTRIVIER", "7403"},
    {"KLIPHEUWEL", "7405"},
}};
constexpr std::array<const char*, 10> kStreets = {
    "KERKSTRAAT",   "DUINESTRAAT", "SEEMEEULAAN",  "PROTEASTRAAT",       "VOORTREKKERWEG",
    "FYNBOSSINGEL", "HAVENWEG",    "MARINE DRIVE", "SANDPIPER CRESCENT", "BOGENVILLEASTRAAT"};
constexpr std::array<const char*, 6> kOtherSchools = {
    "HOëRSKOOL KLIPRIVIER",    "HOëRSKOOL BERGSIG",  "SEAVIEW HIGH SCHOOL",
    "PROTEA SECONDARY SCHOOL", "HOëRSKOOL SANDVELD", "LAERSKOOL SEEKOEIVLEI"};
constexpr std::array<const char*, 4> kUniversitiesAf = {
    "UNIVERSITEIT STELLENBOSCH", "UNIVERSITEIT VAN PRETORIA", "NOORDWES-UNIVERSITEIT", "UNISA"};
constexpr std::array<const char*, 4> kUniversitiesEn = {
    "UNIVERSITY OF CAPE TOWN", "UNIVERSITY OF THE WESTERN CAPE", "CPUT", "UNISA"};
struct Bank {
    const char* name;
    const char* branch;
};
constexpr std::array<Bank, 5> kBanks = {{
    {"ABSA", "632005"},
    {"CAPITEC", "470010"},
    {"FNB", "250655"},
    {"NEDBANK", "198765"},
    {"STANDARD BANK", "051001"},
}};
constexpr std::array<const char*, 8> kCellPrefixes = {"072", "073", "076", "078",
                                                      "079", "082", "083", "084"};

// Positions in the qualification lists of the qualifications form.
constexpr int kProfSecondaryDiploma = 4;
constexpr int kProfBEd = 5;
constexpr int kProfPgce = 6;
constexpr int kProfBEdHonours = 14;
constexpr int kProfPhd = 16;
constexpr int kAkadBa = 1;
constexpr int kAkadBsc = 2;

// ---- arithmetic -----------------------------------------------------------------------------

class Rng {
  public:
    explicit Rng(std::uint32_t seed) : engine_(seed) {}
    // 0 to n - 1; the slight bias of the remainder does not matter here.
    int below(int n) { return static_cast<int>(engine_() % static_cast<std::uint32_t>(n)); }
    QString digits(int n) {
        QString s;
        for (int i = 0; i < n; ++i) {
            s += QChar(u'0' + below(10));
        }
        return s;
    }
    // n digits, the first not 0.
    QString number(int n) { return QChar(u'1' + below(9)) + digits(n - 1); }

  private:
    std::mt19937 engine_;
};

// The check digit of the first twelve digits of a South African identity number.
int id_check_digit(const QString& twelve) {
    auto digit = [&](int position) { return twelve.at(position - 1).unicode() - u'0'; };
    int odd = 0;
    for (int p = 1; p <= 11; p += 2) {
        odd += digit(p);
    }
    int even = 0;
    for (int p = 2; p <= 12; p += 2) {
        even = even * 10 + digit(p);
    }
    int even_sum = 0;
    for (int doubled = even * 2; doubled > 0; doubled /= 10) {
        even_sum += doubled % 10;
    }
    const int remainder = (odd + even_sum) % 10;
    return remainder == 0 ? 0 : 10 - remainder;
}

// YYMMDD, a sequence of four digits (5000 and up for men), 0 for a citizen, 8, the check digit.
QString id_number(const QDate& birth, bool male, Rng& rng) {
    const int sequence = (male ? 5000 : 0) + 100 + rng.below(4800);
    const QString twelve = birth.toString(QStringLiteral("yyMMdd")) +
                           QString::number(sequence).rightJustified(4, u'0') + QStringLiteral("08");
    return twelve + QChar(u'0' + id_check_digit(twelve));
}

QDate easter_sunday(int y) {
    const int a = y % 19;
    const int b = y / 100;
    const int c = y % 100;
    const int d = b / 4;
    const int e = b % 4;
    const int f = (b + 8) / 25;
    const int g = (b - f + 1) / 3;
    const int h = (19 * a + b - d - g + 15) % 30;
    const int i = c / 4;
    const int k = c % 4;
    const int l = (32 + 2 * e + 2 * i - h - k) % 7;
    const int m = (a + 11 * h + 22 * l) / 451;
    const int month = (h + l - 7 * m + 114) / 31;
    const int day = (h + l - 7 * m + 114) % 31 + 1;
    return {y, month, day};
}

// The public holidays of the year; one that falls on a Sunday moves to the Monday.
std::vector<QDate> public_holidays(int y) {
    static constexpr std::array<std::array<int, 2>, 10> kFixed = {
        {{1, 1}, {3, 21}, {4, 27}, {5, 1}, {6, 16}, {8, 9}, {9, 24}, {12, 16}, {12, 25}, {12, 26}}};
    std::vector<QDate> days;
    for (const auto& md : kFixed) {
        const QDate d(y, md[0], md[1]);
        days.push_back(d);
        if (d.dayOfWeek() == Qt::Sunday) {
            days.push_back(d.addDays(1));
        }
    }
    const QDate easter = easter_sunday(y);
    days.push_back(easter.addDays(-2));
    days.push_back(easter.addDays(1));
    return days;
}

// The school days of the first `terms` terms: weekdays inside the term dates that are no
// public holiday.
std::vector<QDate> school_days(int y, int terms) {
    static constexpr std::array<std::array<int, 4>, 4> kTerms = {
        {{1, 15, 3, 27}, {4, 8, 6, 26}, {7, 21, 10, 2}, {10, 13, 12, 9}}};
    const std::vector<QDate> holidays = public_holidays(y);
    std::vector<QDate> days;
    for (int t = 0; t < terms; ++t) {
        const auto& term = kTerms[static_cast<std::size_t>(t)];
        for (QDate d(y, term[0], term[1]); d <= QDate(y, term[2], term[3]); d = d.addDays(1)) {
            if (d.dayOfWeek() <= Qt::Friday &&
                std::find(holidays.begin(), holidays.end(), d) == holidays.end()) {
                days.push_back(d);
            }
        }
    }
    return days;
}

bool is_educator(const Person& p) {
    const QString k = QString::fromLatin1(p.klas);
    return k != u"PSS" && k != u"PS" && k != u"ADMIN";
}

// ---- what each person gets beside the table ------------------------------------------------

struct Particulars {
    QDate birth;
    QString id;
    QString persal;
    QString sace;
    QString cell;
    QString home_phone;
    QString email;
    QString street;
    Town town;
    QString postal1;  // blank: the postal address is the home address
    QString account;
    QString tax_number;
    QString medical_number;  // blank: no medical fund
    QString union_number;
    QString cemis;
    QString lurits;
};

QString cell_number(Rng& rng) {
    return QString::fromLatin1(kCellPrefixes[static_cast<std::size_t>(rng.below(8))]) + u' ' +
           rng.number(3) + u' ' + rng.digits(4);
}

QString mail_name(const QString& first, const QString& surname) {
    return fold_accents(first).toLower() + u'.' +
           fold_accents(surname).remove(u' ').remove(u'\'').toLower();
}

Particulars particulars_of(const Person& p, int index, int year, Rng& rng) {
    Particulars x;
    x.birth = QDate(year - p.age, p.birth_month, p.birth_day);
    x.id = id_number(x.birth, p.male, rng);
    if (p.paymaster == 'O') {
        x.persal = rng.number(8);
    }
    if (is_educator(p)) {
        x.sace = rng.number(7);
    }
    x.cell = cell_number(rng);
    if (index % 2 == 0) {
        x.home_phone = QString::fromLatin1(kDialCode) + QStringLiteral(" 71") +
                       QString::number(3 + rng.below(5)) + u' ' + rng.digits(4);
    }
    x.email = mail_name(u8(p.known_as), u8(p.surname)) +
              QString::fromLatin1(is_educator(p) ? kStaffDomain : kHomeDomain);
    x.street = QString::number(1 + rng.below(98)) + u' ' +
               QString::fromLatin1(kStreets[static_cast<std::size_t>(index) % kStreets.size()]);
    x.town = kTowns[static_cast<std::size_t>(index % 7 == 3 ? 1 : index % 11 == 5 ? 2 : 0)];
    if (index % 3 == 1) {
        x.postal1 = QStringLiteral("POSBUS ") + QString::number(10 + rng.below(890));
    }
    x.account = rng.number(10);
    x.tax_number = QChar(u'0' + rng.below(4)) + rng.digits(9);
    if (p.paymaster == 'O' && index % 2 == 0) {
        x.medical_number = rng.number(9);
    }
    x.union_number = rng.number(6);
    if (p.paymaster == 'O') {
        x.cemis = rng.number(9);
    }
    x.lurits = rng.number(9);
    return x;
}

// ---- the writer of one year ----------------------------------------------------------------

class YearWriter {
  public:
    YearWriter(Session& s, int base_year, bool current, const std::vector<Particulars>& people,
               QStringList& files)
        : s_(s),
          base_(base_year),
          year_(s.ledger_year.toInt()),
          current_(current),
          people_(people),
          files_(files) {}

    void run() {
        make_folders();
        remove_old_files();
        write_school();
        open_staff(Code::PRSALG);
        open_staff(Code::PRSADD);
        open_staff(Code::PRSNME);
        open_staff(Code::PRSVAK);
        open_staff(Code::PRSAFW);
        open_staff(Code::PRSLNE);
        open_staff(Code::PRSSBI);
        open_staff(Code::PRSLURITS);
        open_staff(Code::BHRLGM);
        for (std::size_t i = 0; i < std::size(kStaff); ++i) {
            write_master(kStaff[i], people_[i], static_cast<int>(i));
            write_additional(kStaff[i], people_[i]);
            write_name(kStaff[i]);
        }
        for (std::size_t i = 0; i < std::size(kStaff); ++i) {
            write_subjects(kStaff[i]);
        }
        write_attendance();
        write_salaries();
        write_demo_payroll(s_, files_);
        write_reasons();
        write_lurits();
        write_members();
        for (Code c : {Code::PRSALG, Code::PRSADD, Code::PRSNME, Code::PRSVAK, Code::PRSAFW,
                       Code::PRSLNE, Code::PRSSBI, Code::PRSLURITS, Code::BHRLGM}) {
            close(c, s_.folders.staff);
        }
    }

    int staff = 0;
    int inactive = 0;
    int deleted = 0;
    int members = 0;

  private:
    static QString file_name(Code c) {
        const store::Layout& l = store::layout_of(c);
        return QString::fromLatin1(l.file_name.data(), static_cast<qsizetype>(l.file_name.size()));
    }

    void make_folders() {
        const store::Folders& f = s_.folders;
        for (const QString& folder : network_lines(f)) {
            s_.fs().create_folder(folder);
        }
        s_.fs().create_folder(f.general_year);
        s_.fs().create_folder(f.workstation);
    }

    void remove_old_files() {
        for (Code c : store::kStaffCodes) {
            s_.fs().delete_file(winpath::join(s_.folders.staff, file_name(c)));
        }
        s_.fs().delete_file(winpath::join(s_.folders.school, file_name(Code::SKL)));
    }

    void open_staff(Code c) { s_.open_staff_file(file_code(c), s_.folders.staff); }

    static QString file_code(Code c) {
        const store::Layout& l = store::layout_of(c);
        return QString::fromLatin1(l.code.data(), static_cast<qsizetype>(l.code.size()));
    }

    void close(Code c, const QString& folder) {
        s_.close_file_handle(s_.state(c).handle);
        files_ << s_.fs().native(winpath::join(folder, file_name(c)));
    }

    // The state of a record in this year: a deleted record stood inactive the year before.
    char state_of(const Person& p) const {
        if (!current_ && p.state == 'D') {
            return '*';
        }
        return p.state;
    }

    void write_school() {
        s_.open_suite_file(QStringLiteral("SKL"), s_.folders.school);
        constexpr const auto& L = store::SKL;
        Record& r = s_.working(Code::SKL);
        r.clear();
        r.set_text(L["SD_SKOOL"], u8(kSchoolName));
        r.set_text(L["SD_ADRES1"], QStringLiteral("POSBUS 118"));
        r.set_text(L["SD_ADRES2"], QStringLiteral("DUINEVELD"));
        r.set_text(L["SD_ADRES3"], QStringLiteral("WES-KAAP"));
        r.set_text(L["SD_KODE"], QStringLiteral("7399"));
        r.set_text(L["SD_FOON"], QString::fromLatin1(kSchoolPhone));
        r.set_text(L["SD_FAKS"], QString::fromLatin1(kSchoolFax));
        r.set_text(L["SD_FOON_K"], QString::fromLatin1(kDialCode));
        r.set_text(L["SD_FAKS_K"], QString::fromLatin1(kDialCode));
        r.set_text(L["SD_PROV"], QStringLiteral("WC"));
        r.set_text(L["SD_DIST_NR"], QStringLiteral("105"));
        r.set_text(L["SD_DISTRIK"], QStringLiteral("WESKUS"));
        r.set_int16(L["SD_OUDSTES"], 1);
        r.set_text(L["SD_EMAIL"], QStringLiteral("kantoor") + QString::fromLatin1(kStaffDomain));
        r.set_text(L["SD_WYK"], QString());
        r.set_text(L["SX_HOOF"], QStringLiteral("MNR J P DU TOIT"));
        r.set_text(L["SX_TTL_HF"], QStringLiteral("MNR"));
        r.set_text(L["SX_VRL_HF"], QStringLiteral("JP"));
        r.set_text(L["SX_FNK_HF"], QString::fromLatin1(kDialCode));
        r.set_text(L["SX_FNR_HF"], QString::fromLatin1(kSchoolPhone));
        r.set_text(L["SX_SNK_HF"], QStringLiteral("082"));
        r.set_text(L["SX_SNR_HF"], QStringLiteral("551 2040"));
        r.set_text(L["SD_S_ADR1"], QStringLiteral("SKOOLSTRAAT 12"));
        r.set_text(L["SD_S_ADR2"], QStringLiteral("DUINEVELD"));
        r.set_text(L["SD_S_ADR3"], QStringLiteral("WES-KAAP"));
        r.set_text(L["SD_S_KODE"], QStringLiteral("7399"));
        // The grades of the school, which name the learner folders.
        const char* const grades[] = {"8", "9", "10", "11", "12"};
        for (int i = 0; i < static_cast<int>(std::size(grades)); ++i) {
            r.set_text(L["SD_ST"], QString::fromLatin1(grades[i]), i + 1);
        }
        s_.write_record(Code::SKL, 1);
        close(Code::SKL, s_.folders.school);
    }

    void write_master(const Person& p, const Particulars& x, int index) {
        constexpr const auto& L = store::PRSALG;
        const bool educator = is_educator(p);
        const bool af = p.afrikaans;
        Record& r = s_.working(Code::PRSALG);
        r.clear();
        r.set_text(L["PA_POS_NR"], QString::fromLatin1(p.post));
        const char state = state_of(p);
        r.set_text(L["PA_AKTIEF"], state == ' ' ? QString() : QString(QChar::fromLatin1(state)));
        r.set_text(L["PA_VAN"], u8(p.surname));
        r.set_text(L["PA_NAME"], u8(p.names));
        r.set_text(L["PA_TITEL"], QString::fromLatin1(p.title));
        r.set_text(L["PA_N_VAN"], u8(p.maiden));
        r.set_text(L["PA_PERSAL"], x.persal);
        r.set_text(L["PA_GESLAG"],
                   p.male ? QStringLiteral("M") : (af ? QStringLiteral("V") : QStringLiteral("F")));
        r.set_text(L["PA_ID_NR"], x.id);
        r.set_date(L["PA_G_DATUM"], x.birth);
        r.set_text(L["PA_HWLK_ST"], QString(QChar::fromLatin1(p.marital)));
        r.set_text(L["PA_BRD_WNR"],
                   p.male || p.marital != 'G' ? QStringLiteral("J") : QStringLiteral("N"));
        r.set_text(L["PA_UN_NAAM"], union_of(p));
        r.set_text(L["PA_OD_BL"], QString(QChar::fromLatin1(p.paymaster)));
        r.set_text(L["PA_RAS"], race_code(p.race, af));
        r.set_text(L["PA_TAAL"], language_code(p.language));
        r.set_text(L["PA_P_T"], QString(QChar::fromLatin1(p.tenure)));
        r.set_int16(L["PA_REQV"], p.reqv);
        r.set_text(L["PK_KLAS_NR"], QString::fromLatin1(p.klas));
        if (educator) {
            r.set_text(L["PK_REG_KLS"], QString::fromLatin1(p.klas));
        }
        const QString town = QString::fromLatin1(x.town.name);
        const QString code = QString::fromLatin1(x.town.code);
        r.set_text(L["PA_H_ADR1"], x.street);
        r.set_text(L["PA_H_ADR2"], town);
        r.set_text(L["PA_H_KODE"], code);
        r.set_text(L["PA_P_ADR1"], x.postal1.isEmpty() ? x.street : x.postal1);
        r.set_text(L["PA_P_ADR2"], town);
        r.set_text(L["PA_P_KODE"], code);
        r.set_text(L["PA_T_HUIS"], x.home_phone);
        r.set_text(L["PA_T_WERK"],
                   QString::fromLatin1(kDialCode) + u' ' + QString::fromLatin1(kSchoolPhone));
        r.set_text(L["PA_T_SEL"], x.cell);
        r.set_text(L["PA_H_TAAL"], home_language_letter(p.language));
        r.set_text(L["PA_EPOS"], x.email);
        r.set_int16(L["PA_ICT_LV"], (educator ? 2 : 1) + index % 3);
        if (!x.medical_number.isEmpty()) {
            r.set_text(L["PM_FONDS"], QStringLiteral("GEMS"));
            r.set_text(L["PM_F_NR"], x.medical_number);
            r.set_text(L["PM_F_LID"], initials(u8(p.names)) + u' ' + u8(p.surname));
            r.set_text(L["PM_F_ID"], x.id);
        }

        const Bank& bank = kBanks[static_cast<std::size_t>(index) % kBanks.size()];
        r.set_text(L["PB_BNK_NM"], QString::fromLatin1(bank.name));
        r.set_text(L["PB_BNK_NR"], QString::fromLatin1(bank.branch));
        r.set_text(L["PB_REK_TPE"], index % 4 == 1
                                        ? (af ? QStringLiteral("SPAAR") : QStringLiteral("SAVINGS"))
                                        : (af ? QStringLiteral("TJEK") : QStringLiteral("CHEQUE")));
        r.set_text(L["PB_REK_NR"], x.account);
        r.set_text(L["PB_TAX_NR"], x.tax_number);
        r.set_text(L["PB_REK_HR"], initials(u8(p.names)) + u' ' + u8(p.surname));
        const QString yes = af ? QStringLiteral("J") : QStringLiteral("Y");
        const QString no = QStringLiteral("N");
        if (p.paymaster == 'B') {
            r.set_text(L["PB_KONTRAK"], yes);
            r.set_int16(L["PB_SALARIS"], p.salary);
            r.set_text(L["PB_TAX_DED"], yes);
            r.set_int16(L["PB_TAX_AMT"], monthly_tax(p.salary));
        } else {
            r.set_text(L["PB_KONTRAK"], no);
            r.set_text(L["PB_TAX_DED"], no);
        }

        const QDate first = first_appointment(p, index);
        const QDate here = appointment_here(p, index);
        r.set_date(L["PA_DTM_AAN"], first);
        r.set_date(L["PA_DTM_SKL"], here);
        r.set_int16(L["PO_JRE_SKL"], p.years_school);
        r.set_int16(L["PO_JRE_PRV"], p.years_education);
        r.set_int16(L["PO_JRE_OND"], p.years_education);
        if (educator) {
            write_qualifications(r, p, x, index);
            write_career(r, p, index, first, here);
            r.set_text(L["PA_DPT_NR"], x.sace);
        }
        r.set_text(L["PA_FOR_NR"], QString::number(p.category));
        s_.append_record(Code::PRSALG);

        if (current_) {
            ++staff;
            inactive += state == '*' ? 1 : 0;
            deleted += state == 'D' ? 1 : 0;
        }
    }

    void write_qualifications(Record& r, const Person& p, const Particulars& x, int index) {
        constexpr const auto& L = store::PRSALG;
        const auto& universities = p.afrikaans ? kUniversitiesAf : kUniversitiesEn;
        const QString place = QString::fromLatin1(
            universities[static_cast<std::size_t>(index) % universities.size()]);
        const int born = x.birth.year();
        int row = 0;
        auto add = [&](const char* type, int year_obtained) {
            ++row;
            r.set_text(L["PK_GRDE"], QString::fromLatin1(type), row);
            r.set_text(L["PK_WAAR"], place, row);
            r.set_int16(L["PK_JAAR"], std::min(year_obtained, base_ - 1), row);
        };
        if (p.reqv == 13) {
            add("P", born + 21);
        } else if (p.reqv == 14) {
            add("P", born + 22);
        } else {
            add("A", born + 21);
            add("P", born + 22);
            add("P", born + 26);
            if (QString::fromLatin1(p.title) == u"DR") {
                add("P", born + 33);
            }
        }
    }

    // The rows of the qualifications in the additional record, as write_qualifications numbers
    // them.
    static void qualification_positions(Record& r, const Person& p) {
        constexpr const auto& D = store::PRSADD;
        if (!is_educator(p)) {
            return;
        }
        if (p.reqv == 13) {
            r.set_int16(D["PD_KW_PROF"], kProfSecondaryDiploma, 1);
        } else if (p.reqv == 14) {
            r.set_int16(D["PD_KW_PROF"], kProfBEd, 1);
        } else {
            const QString subjects = QString::fromLatin1(p.subjects);
            // Mathematics and the sciences (codes 2xxx and 3xxx, natural sciences 7010).
            const bool science = subjects.startsWith(u'2') || subjects.startsWith(u'3') ||
                                 subjects.contains(u",2") || subjects.contains(u",3") ||
                                 subjects.contains(u"7010");
            r.set_int16(D["PD_KW_AKAD"], science ? kAkadBsc : kAkadBa, 1);
            r.set_int16(D["PD_KW_PROF"], kProfPgce, 2);
            r.set_int16(D["PD_KW_PROF"], kProfBEdHonours, 3);
            if (QString::fromLatin1(p.title) == u"DR") {
                r.set_int16(D["PD_KW_PROF"], kProfPhd, 4);
            }
        }
    }

    void write_career(Record& r, const Person& p, int index, const QDate& first,
                      const QDate& here) {
        constexpr const auto& L = store::PRSALG;
        const bool af = p.afrikaans;
        int row = 0;
        const int elsewhere = p.years_education - p.years_school;
        if (elsewhere > 0) {
            const QString school =
                u8(kOtherSchools[static_cast<std::size_t>(index) % kOtherSchools.size()]);
            ++row;
            r.set_text(L["PA_WAAR"], school, row);
            r.set_text(L["PA_BSK"], af ? QStringLiteral("ONDERWYSER") : QStringLiteral("EDUCATOR"),
                       row);
            r.set_text(L["PA_TPA"], QStringLiteral("P"), row);
            r.set_date(L["PA_DTM"], first, row);
            r.set_text(L["PO_SKL"], school, 1);
            r.set_date(L["PO_VAN"], first, 1);
            r.set_date(L["PO_TOT"], here.addDays(-1), 1);
            r.set_int16(L["PO_OND"], elsewhere, 1);
        }
        ++row;
        r.set_text(L["PA_WAAR"], u8(kSchoolName), row);
        r.set_text(L["PA_BSK"], u8(p.post_text), row);
        const QString type = p.paymaster == 'B' ? (af ? QStringLiteral("B") : QStringLiteral("G"))
                                                : QString(QChar::fromLatin1(p.tenure));
        r.set_text(L["PA_TPA"], type, row);
        r.set_date(L["PA_DTM"], here, row);

        // Years in the promotion posts, in step with the post level.
        if (p.level >= 4) {
            r.set_int16(L["PO_JRE_HF"], std::min(8, p.years_school));
        }
        if (p.level >= 3) {
            r.set_int16(L["PO_JRE_A_H"], 5);
        }
        if (p.level >= 2) {
            r.set_int16(L["PO_JRE_DPT"], p.level == 2 ? 4 : 6);
        }
    }

    void write_additional(const Person& p, const Particulars& x) {
        constexpr const auto& D = store::PRSADD;
        Record& r = s_.working(Code::PRSADD);
        r.clear();
        r.set_text(D["PD_POS_NR"], QString::fromLatin1(p.post));
        r.set_int16(D["PD_POSVLAK"], p.level);
        r.set_text(D["PD_NOEMNAAM"], u8(p.known_as));
        if (is_educator(p)) {
            r.set_text(D["PD_ONDERWYS_VLAK"], QStringLiteral("3"));
        }
        r.set_int16(D["PD_KATEGORIE"], p.category);
        if (!union_of(p).isEmpty()) {
            r.set_text(D["PD_UNIE_NR"], x.union_number);
        }
        r.set_text(D["PD_CEMIS"], x.cemis);
        qualification_positions(r, p);
        s_.append_record(Code::PRSADD);
    }

    void write_name(const Person& p) {
        constexpr const auto& N = store::PRSNME;
        Record& r = s_.working(Code::PRSNME);
        r.clear();
        r.set_text(N["PN_POS_NR"], QString::fromLatin1(p.post));
        r.set_text(N["PN_NAAM"], QString::fromLatin1(p.title) + u' ' +
                                     store::first_word(u8(p.names)) + u' ' + u8(p.surname));
        s_.append_record(Code::PRSNME);
    }

    void write_subjects(const Person& p) {
        constexpr const auto& V = store::PRSVAK;
        const QString post = QString::fromLatin1(p.post);
        s_.ensure_subject_record(post);
        const QStringList cells = QString::fromLatin1(p.subjects).split(u',', Qt::SkipEmptyParts);
        if (cells.isEmpty()) {
            return;
        }
        const int number = s_.find_by_key(Code::PRSVAK, V["PV_POS_NR"], post);
        if (number == 0) {
            return;
        }
        Record& r = s_.working(Code::PRSVAK);
        int slot = 0;
        for (const QString& cell : cells) {
            const QStringList parts = cell.split(u':');
            ++slot;
            r.set_text(V["PV_VAK2"], parts.value(0), slot);
            r.set_text(V["PV_GRD2"], parts.value(1), slot);
            r.set_int16(V["PV_JR3"], 4, slot);
            r.set_int16(V["PV_JR4"], std::max(1, std::min(p.years_education, 12) - slot + 1), slot);
        }
        s_.write_record(Code::PRSVAK, number);
    }

    void write_attendance() {
        constexpr const auto& W = store::PRSAFW;
        Rng rng(0x4B4F5256u + static_cast<std::uint32_t>(year_));
        // The current year stands at mid-year; the year before is complete.
        const std::vector<QDate> days = school_days(year_, current_ ? 2 : 4);
        for (const Person& p : kStaff) {
            if (state_of(p) != ' ') {
                continue;
            }
            const QString post = QString::fromLatin1(p.post);
            s_.ensure_attendance_record(post);
            const int number = s_.find_by_key(Code::PRSAFW, W["PF_POS_NR"], post);
            if (number == 0) {
                continue;
            }
            Record& r = s_.working(Code::PRSAFW);
            auto mark = [&](const QDate& d, const char* letter, int reason) {
                r.set_text(W["PF_DAG"], QString::fromLatin1(letter), d.dayOfYear());
                r.set_text(W["PF_REDE"],
                           reason == 0 ? QStringLiteral("..")
                                       : QString::number(reason).rightJustified(2, u' '),
                           d.dayOfYear());
            };
            const bool employee = !is_educator(p);
            int run = 0;
            int run_reason = 0;
            for (std::size_t i = 0; i < days.size(); ++i) {
                const QDate& d = days[i];
                if (run > 0) {
                    mark(d, "a", run_reason);
                    --run;
                    continue;
                }
                const int roll = rng.below(1000);
                if (roll < 8) {
                    run_reason = kReasonSick;
                    run = rng.below(3);
                    mark(d, "a", kReasonSick);
                } else if (roll < 11) {
                    mark(d, "a", kReasonFamily);
                } else if (roll < 15) {
                    mark(d, "l", 0);
                } else if (roll < 18) {
                    mark(d, "u", 0);
                } else if (roll < 19) {
                    mark(d, "a", 0);
                } else if (roll < 20) {
                    mark(d, "a", kReasonStudy);
                } else if (roll < 23 && employee) {
                    run_reason = kReasonAnnual;
                    run = 1 + rng.below(4);
                    mark(d, "a", kReasonAnnual);
                }
            }
            if (current_ && post == QLatin1String(kMaternity) && days.size() > 85) {
                for (std::size_t i = 55; i < 85; ++i) {
                    mark(days[i], "a", kReasonMaternity);
                }
            }
            s_.write_record(Code::PRSAFW, number);
        }
    }

    void write_salaries() {
        constexpr const auto& S = store::PRSLNE;
        const int months = current_ ? 6 : 12;
        for (const Person& p : kStaff) {
            if (p.paymaster != 'B' || state_of(p) != ' ') {
                continue;
            }
            for (int month = 1; month <= months; ++month) {
                Record& r = s_.working(Code::PRSLNE);
                r.clear();
                r.set_text(S["PL_POS_NR"], QString::fromLatin1(p.post));
                r.set_text(S["POS_BSK"], u8(p.post_text));
                r.set_int16(S["PL_MAAND"], month);
                r.set_int16(S["PL_SALARIS"], p.salary);
                if (month == 12) {
                    r.set_int16(S["PL_BONUS"], p.salary);  // the thirteenth cheque
                }
                r.set_int16(S["PL_PENS"], p.salary * 75 / 1000);
                r.set_int16(S["PL_WVF"], std::min(p.salary / 100, 177));
                r.set_int16(S["PL_TAX"], monthly_tax(p.salary));
                s_.append_record(Code::PRSLNE);
            }
        }
    }

    void write_reasons() {
        constexpr const auto& R = store::PRSSBI;
        for (const char* reason : kReasons) {
            Record& r = s_.working(Code::PRSSBI);
            r.clear();
            r.set_text(R["SBI_TIPE"], QString::fromLatin1(reason));
            r.set_text(R["SBI_BESK"], QString::fromLatin1(reason));
            s_.append_record(Code::PRSSBI);
        }
    }

    void write_lurits() {
        constexpr const auto& U = store::PRSLURITS;
        for (std::size_t i = 0; i < std::size(kStaff); ++i) {
            const QString post = QString::fromLatin1(kStaff[i].post);
            if (std::find_if(kNoLurits.begin(), kNoLurits.end(), [&](const char* p) {
                    return post == QLatin1String(p);
                }) != kNoLurits.end()) {
                continue;
            }
            Record& r = s_.working(Code::PRSLURITS);
            r.clear();
            r.set_text(U["LU_ID_NR"], people_[i].id);
            r.set_text(U["LU_NR"], people_[i].lurits);
            s_.append_record(Code::PRSLURITS);
        }
    }

    void write_members() {
        constexpr const auto& B = store::BHRLGM;
        Rng rng(0x53424Cu);  // the same members in every year's file
        for (const Member& m : kMembers) {
            Record& r = s_.working(Code::BHRLGM);
            r.clear();
            r.set_text(B["BL_TIPE"], QString::fromLatin1(m.type));
            r.set_text(B["BL_AKTIEF"], QString());
            r.set_text(B["BL_HOEDANIG"], QString::fromLatin1(m.capacity));
            r.set_text(B["BL_ONDERRIG"], QString::fromLatin1(m.education));
            r.set_byte(B["BL_SA_BURGER"], 1);
            r.set_int16(B["BL_LID_AKTIEF"], 1);
            r.set_date(B["BL_DTM_VERKIES"], QDate(base_ - 1, 3, 12));
            r.set_date(B["BL_DTM_WYSIG"], QDate(base_ - 1, 3, 20));
            r.set_text(B["BL_GEBRUIKER"], QStringLiteral("Kantoor"));
            if (m.staff_post != nullptr) {
                from_staff(r, m.staff_post);
            } else {
                parent(r, m, rng);
            }
            s_.append_record(Code::BHRLGM);
            ++members;
        }
    }

    // The fields the copy from a staff record fills.
    void from_staff(Record& r, const char* post) {
        constexpr const auto& B = store::BHRLGM;
        for (std::size_t i = 0; i < std::size(kStaff); ++i) {
            const Person& p = kStaff[i];
            if (QLatin1String(p.post) != QLatin1String(post)) {
                continue;
            }
            const Particulars& x = people_[i];
            r.set_text(B["BL_POS_NR"], QString::fromLatin1(p.post));
            r.set_text(B["BL_VAN"], u8(p.surname));
            r.set_text(B["BL_NAME"], u8(p.names));
            r.set_text(B["BL_VRLTR"], initials(u8(p.names)));
            r.set_text(B["BL_TITEL"], QString::fromLatin1(p.title));
            r.set_text(B["BL_GESLAG"], p.male ? QStringLiteral("M") : QStringLiteral("F"));
            r.set_text(B["BL_ID_NR"], x.id);
            r.set_date(B["BL_G_DATUM"], x.birth);
            r.set_text(B["BL_HWLK_ST"], QString(QChar::fromLatin1(p.marital)));
            r.set_text(B["BL_RAS"], race_code(p.race, p.afrikaans));
            r.set_text(B["BL_H_TAAL"], language_code(p.language));
            r.set_text(B["BL_TAAL2"], language_code(p.language));
            r.set_text(B["BL_P_ADR1"], x.postal1.isEmpty() ? x.street : x.postal1);
            r.set_text(B["BL_P_ADR2"], QString::fromLatin1(x.town.name));
            r.set_text(B["BL_P_KODE"], QString::fromLatin1(x.town.code));
            r.set_text(B["BL_SEL"], QString(x.cell).remove(u' '));
            const QString home = QString(x.home_phone).remove(u' ');
            r.set_text(B["BL_T_KODE"], home.left(3));
            r.set_text(B["BL_T_NR"], home.mid(3));
            r.set_text(B["BL_EPOS"], x.email);
            return;
        }
    }

    void parent(Record& r, const Member& m, Rng& rng) {
        constexpr const auto& B = store::BHRLGM;
        static constexpr std::array<const char*, 6> kMarital = {
            "G GETROUD", "O ONGETROUD", "S GESKEI", "", "", ""};
        static constexpr std::array<const char*, 11> kLanguages = {
            "", "1 AFRIKAANS", "2 ENGELS", "", "", "", "", "", "", "9 ISIXHOSA", "10 ISIZULU"};
        const QDate birth(base_ - m.age, m.birth_month, m.birth_day);
        r.set_text(B["BL_VAN"], u8(m.surname));
        r.set_text(B["BL_NAME"], u8(m.names));
        r.set_text(B["BL_VRLTR"], initials(u8(m.names)));
        r.set_text(B["BL_TITEL"], QString::fromLatin1(m.title));
        r.set_text(B["BL_GESLAG"], m.male ? QStringLiteral("M") : QStringLiteral("F"));
        r.set_text(B["BL_ID_NR"], id_number(birth, m.male, rng));
        r.set_date(B["BL_G_DATUM"], birth);
        r.set_text(B["BL_HWLK_ST"], QString::fromLatin1(kMarital[m.marital == 'G'   ? 0
                                                                 : m.marital == 'O' ? 1
                                                                                    : 2]));
        r.set_text(B["BL_RAS"], race_code(m.race, true));
        r.set_text(B["BL_H_TAAL"],
                   QString::fromLatin1(kLanguages[static_cast<std::size_t>(m.language)]));
        r.set_text(B["BL_TAAL2"],
                   QString::fromLatin1(kLanguages[static_cast<std::size_t>(m.second_language)]));
        r.set_text(B["BL_P_ADR1"],
                   QStringLiteral("POSBUS ") + QString::number(10 + rng.below(890)));
        r.set_text(B["BL_P_ADR2"], QString::fromLatin1(kTowns[0].name));
        r.set_text(B["BL_P_KODE"], QString::fromLatin1(kTowns[0].code));
        r.set_text(B["BL_SEL"], QString(cell_number(rng)).remove(u' '));
        if (m.age >= 18) {
            r.set_text(B["BL_T_KODE"], QString::fromLatin1(kDialCode));
            r.set_text(B["BL_T_NR"],
                       QStringLiteral("71") + QString::number(3 + rng.below(5)) + rng.digits(4));
        }
        r.set_text(B["BL_EPOS"], mail_name(u8(m.names).section(u' ', 0, 0), u8(m.surname)) +
                                     QString::fromLatin1(kHomeDomain));
    }

    // ---- codes as the forms store them ----

    // Position, a blank and the list text, cut to the five characters of the field.
    static QString race_code(char race, bool af) {
        switch (race) {
            case 'B':
                return af ? QStringLiteral("1 SWA") : QStringLiteral("1 BLA");
            case 'C':
                return af ? QStringLiteral("2 KLE") : QStringLiteral("2 COL");
            default:
                return af ? QStringLiteral("4 BLA") : QStringLiteral("4 WHI");
        }
    }

    static QString language_code(int language) {
        switch (language) {
            case 2:
                return QStringLiteral("2 ENG");
            case 9:
                return QStringLiteral("9 ISI");
            case 10:
                return QStringLiteral("10 IS");
            default:
                return QStringLiteral("1 AFR");
        }
    }

    // The first letter of the language's name.
    static QString home_language_letter(int language) {
        switch (language) {
            case 2:
                return QStringLiteral("E");
            case 9:
                return QStringLiteral("X");
            case 10:
                return QStringLiteral("Z");
            default:
                return QStringLiteral("A");
        }
    }

    static QString union_of(const Person& p) {
        if (is_educator(p)) {
            if (p.race == 'B') {
                return QStringLiteral("SADTU");
            }
            return p.afrikaans ? QStringLiteral("SAOU") : QStringLiteral("NAPTOSA");
        }
        return QString::fromLatin1(p.klas) == u"ADMIN" ? QStringLiteral("PSA") : QString();
    }

    static int monthly_tax(int salary) { return salary > 7500 ? (salary - 7500) * 18 / 100 : 0; }

    QDate first_appointment(const Person& p, int index) const {
        return {base_ - p.years_education, 1, 10 + index % 10};
    }

    QDate appointment_here(const Person& p, int index) const {
        if (p.years_school == p.years_education) {
            return first_appointment(p, index);
        }
        return {base_ - p.years_school, index % 3 == 0 ? 4 : 1, 1 + index % 20};
    }

    Session& s_;
    int base_;  // the current year of the tree, which every date counts from
    int year_;  // the ledger year of this file set
    bool current_;
    const std::vector<Particulars>& people_;
    QStringList& files_;
};

// LURITS number, grade, Afrikaans and English name of the subjects the demo school offers.
constexpr const char* kSubjectCodes =
    "1010,10,\"Afrikaans Huistaal\",\"Afrikaans Home Language\"\r\n"
    "1020,10,\"Engels Eerste Addisionele Taal\",\"English First Additional Language\"\r\n"
    "2010,10,\"Wiskunde\",\"Mathematics\"\r\n"
    "2020,10,\"Wiskundige Geletterdheid\",\"Mathematical Literacy\"\r\n"
    "3010,10,\"Fisiese Wetenskappe\",\"Physical Sciences\"\r\n"
    "3020,10,\"Lewenswetenskappe\",\"Life Sciences\"\r\n"
    "4010,10,\"Geskiedenis\",\"History\"\r\n"
    "4020,10,\"Geografie\",\"Geography\"\r\n"
    "5010,10,\"Rekeningkunde\",\"Accounting\"\r\n"
    "6010,10,\"Lewensoriëntering\",\"Life Orientation\"\r\n"
    "7010,9,\"Natuurwetenskappe\",\"Natural Sciences\"\r\n"
    "7020,9,\"Skeppende Kunste\",\"Creative Arts\"\r\n"
    "8010,12,\"Inligtingstegnologie\",\"Information Technology\"\r\n"
    "8020,12,\"Ingenieursgrafika en -ontwerp\",\"Engineering Graphics and Design\"\r\n"
    "5020,10,\"Besigheidstudies\",\"Business Studies\"\r\n"
    "5030,10,\"Ekonomie\",\"Economics\"\r\n"
    "8030,10,\"Toerisme\",\"Tourism\"\r\n"
    "8040,10,\"Rekenaartoepassingstegnologie\",\"Computer Applications Technology\"\r\n"
    "8050,10,\"Verbruikerstudies\",\"Consumer Studies\"\r\n"
    "9010,R,\"Kinders se wêreld\",\"Children?s world\"\r\n";

// ---- the LURITS staff workbook -------------------------------------------------------------

// New appointees as the department's LURITS export lists them, for the menu's import: sixteen
// rows of headings, then one person a row from row 17, with a blank row between two people as
// such exports have. Identity numbers stand in number cells, birth dates as date cells or as
// text, as either comes from the department.
struct LuritsPerson {
    const char* surname;
    const char* names;
    const char* title;
    bool male;
    const char* population;
    int age;  // the tree's year less the year of birth
    int birth_month, birth_day;
    bool birth_as_text;
    const char* language;
    int years_at_school;
    const char* appointment;
    int years_in_education;
    const char* paid_by;
};
constexpr LuritsPerson kLuritsPeople[] = {
    {"OCTOBER", "Charlene Anne", "MRS", false, "Coloured", 41, 3, 12, false, "Afrikaans", 6,
     "Permanent", 17, "State"},
    {"MABUZA", "Sipho Daniel", "MR", true, "Black African", 35, 7, 2, false, "Xhosa", 3,
     "Temporary", 8, "State"},
    {nullptr},  // a blank row: the next person keeps the number of his own row
    {"GELDENHUYS", "Hendrik Louw", "MR", true, "White", 57, 11, 30, true, "Afrikaans", 30,
     "Permanent", 33, "State"},
    {"NAIDOO", "Anusha", "MS", false, "Asian/Indian", 32, 5, 18, true, "English", 1, "Temporary", 4,
     "SGB"},
    {"SAULS", "Faried", "MR", true, "Coloured", 46, 9, 5, false, "Afrikaans", 15, "Non educator",
     20, "SGB"},
};

void write_demo_lurits_workbook(Session& s, int base_year, QStringList& files) {
    // Where the import's file dialog opens: the VESPARINE folder of drive C:, which on the demo
    // is both the program drive's and the data tree's.
    const QString file = winpath::join(s.folders.admin.section(u'\\', 0, -2),
                                       QStringLiteral("lurits_personeel.xlsx"));
    const QString native = s.fs().native(file);
    QFile::remove(native);
    // A fixed creation time, so that the workbook is the same to the byte on every run.
    lxw_doc_properties properties{};
    properties.created = QDateTime(QDate(base_year, 1, 2), QTime(8, 0), Qt::UTC).toSecsSinceEpoch();
    lxw_workbook* wb = workbook_new(native.toUtf8().constData());
    if (wb == nullptr) {
        return;
    }
    workbook_set_properties(wb, &properties);
    lxw_worksheet* ws = workbook_add_worksheet(wb, "Educators");
    lxw_format* date = workbook_add_format(wb);
    format_set_num_format(date, "yyyy/mm/dd");
    // Rows and columns from 1, as the import counts them.
    const auto text = [ws](int row, int column, const QString& t) {
        worksheet_write_string(ws, static_cast<lxw_row_t>(row - 1),
                               static_cast<lxw_col_t>(column - 1), t.toUtf8().constData(), nullptr);
    };
    const auto number = [ws](int row, int column, double value, lxw_format* format = nullptr) {
        worksheet_write_number(ws, static_cast<lxw_row_t>(row - 1),
                               static_cast<lxw_col_t>(column - 1), value, format);
    };
    const auto day_serial = [](const QDate& d) {
        return static_cast<double>(QDate(1899, 12, 30).daysTo(d));
    };
    text(1, 1, QStringLiteral("LURITS: EDUCATOR AND STAFF DETAILS"));
    text(3, 1, QStringLiteral("Institution: ") + u8(kSchoolName));
    text(4, 1, QStringLiteral("Province: Western Cape"));
    text(5, 1, QStringLiteral("Academic year: ") + QString::number(base_year));
    const char* const kHeadings[] = {
        "ID Number",          "Persal Number", "Surname",        "First Names",
        "Initials",           "Title",         "Gender",         "Population Group",
        "Date of Birth",      "Home Language", "Date at School", "Appointment Type",
        "Post Level",         "Phase",         "Qualification",  "REQV",
        "Years in Education", "Paid By"};
    for (int c = 0; c < static_cast<int>(std::size(kHeadings)); ++c) {
        text(16, c + 1, QString::fromLatin1(kHeadings[c]));
    }
    Rng rng(0x4C555249u);
    int row = 17;
    for (const LuritsPerson& p : kLuritsPeople) {
        const int r = row++;
        if (p.surname == nullptr) {
            continue;
        }
        const QDate birth(base_year - p.age, p.birth_month, p.birth_day);
        const QString id = id_number(birth, p.male, rng);
        number(r, 1, id.toDouble());
        text(r, 2, QString::number(50000000 + rng.below(40000000)));
        text(r, 3, u8(p.surname));
        text(r, 4, u8(p.names).toUpper());
        text(r, 5, initials(u8(p.names).toUpper()).remove(u' '));
        text(r, 6, u8(p.title));
        text(r, 7, p.male ? QStringLiteral("Male") : QStringLiteral("Female"));
        text(r, 8, u8(p.population));
        if (p.birth_as_text) {
            text(r, 9, birth.toString(QStringLiteral("yyyy/MM/dd")));
        } else {
            number(r, 9, day_serial(birth), date);
        }
        text(r, 10, u8(p.language));
        number(r, 11, day_serial(QDate(base_year - p.years_at_school, 1, 15)), date);
        text(r, 12, u8(p.appointment));
        number(r, 17, p.years_in_education);
        text(r, 18, u8(p.paid_by));
    }
    if (workbook_close(wb) == LXW_NO_ERROR) {
        files << native;
    }
}

QByteArray network_file(const store::Folders& folders) {
    QByteArray bytes;
    for (const QString& line : network_lines(folders)) {
        bytes += cp1252::encode(line);
        bytes += "\r\n";
    }
    return bytes;
}

// ---- a legacy year ---------------------------------------------------------------------------

// A year from before the current layouts, 2014, whatever the demo's year (the attendance
// record grew in 2016, so later years never convert it): the address and attendance files
// in their older record lengths, a subject file older than the subject numbers, and the school
// record and the class periods still as dBASE tables. Choosing the year converts them.
void write_legacy_year(ui::Dialogs& dialogs, const platform::DriveMap& map, const QString& drive,
                       int base_year, const std::vector<Particulars>& people, QStringList& files) {
    const int y = 2014;
    auto session = Session::on_drive(dialogs, map, drive, QString::number(y));
    Session& s = *session;
    // What an earlier run converted must not be taken for the tables of this one.
    for (const QString& folder : {s.folders.staff, s.folders.general_year}) {
        QDir(s.fs().native(folder)).removeRecursively();
    }
    YearWriter(s, base_year, false, people, files).run();
    s.close_file_handle(s.state(Code::SKL).handle);
    const platform::FileSystem& fs = s.fs();
    const auto staff = [&](const char* name) {
        return winpath::join(s.folders.staff, QString::fromLatin1(name));
    };
    // Each record cut back to the old layout; the frozen copies that opening made go, so the
    // files count as never converted.
    const auto downgrade = [&](const char* live, const char* frozen, int length,
                               const std::function<QByteArray(const char*)>& old_record) {
        const QByteArray now = fs.read_all(staff(live)).value_or(QByteArray());
        QByteArray old;
        for (qsizetype at = 0; at + length <= now.size(); at += length) {
            old += old_record(now.constData() + at);
        }
        fs.write_all(staff(live), old);
        fs.delete_file(staff(frozen));
    };
    downgrade("prs_add_random.txt", "prs_add_2016_random.txt", store::PRSADD.record_length,
              [](const char* r) { return QByteArray(r, 63); });
    downgrade("prs_afw_random.txt", "prs_afw_2014_random.txt", store::PRSAFW.record_length,
              [](const char* r) {
                  constexpr int kMarks = store::PRSAFW["PF_DAG"].offset;
                  constexpr int kReasons = store::PRSAFW["PF_REDE"].offset;
                  QByteArray old(r, 5);
                  for (int g = 0; g < 3; ++g) {
                      old += QByteArray(r + kMarks + g * 120 + 1, 120);
                  }
                  for (int g = 0; g < 3; ++g) {
                      old += QByteArray(r + kReasons + 2 * (g * 120 + 1), 240);
                  }
                  return old;
              });
    QFile subjects(fs.native(staff("prs_vak_random.txt")));
    if (subjects.open(QIODevice::ReadWrite)) {
        subjects.setFileTime(QDateTime(QDate(y, 11, 28), QTime(14, 0)),
                             QFileDevice::FileModificationTime);
    }

    // The school record as the table it came from.
    const QString general = s.folders.general_year;
    const QString school_file = winpath::join(general, QStringLiteral("skl_dta_random.txt"));
    Record school(store::SKL);
    if (auto bytes = fs.read_all(school_file); bytes && bytes->size() >= school.size()) {
        school.assign(bytes->constData());
    }
    constexpr const auto& L = store::SKL;
    std::vector<DbfColumn> columns;
    QStringList row;
    for (const char* name :
         {"SD_SKOOL", "SD_ADRES1", "SD_ADRES2", "SD_ADRES3", "SD_KODE", "SD_FOON", "SD_FAKS",
          "SD_PROV", "SD_DIST_NR", "SD_DISTRIK", "SD_EMAIL", "SX_HOOF"}) {
        const store::Field& f = *L.find(name);
        columns.push_back({QString::fromLatin1(name), 'C', f.width});
        row << school.text(f);
    }
    columns.push_back({QStringLiteral("sd_oudstes"), 'L', 1});
    row << QStringLiteral("T");
    columns.push_back({QStringLiteral("SD_TME_OUT"), 'N', 4});
    row << QStringLiteral("15");
    fs.delete_file(school_file);
    files.removeAll(fs.native(school_file));
    const QString school_table = winpath::join(general, QStringLiteral("skl_dta.dbf"));
    fs.write_all(school_table, dbf_table(columns, {row}));
    files << fs.native(school_table);

    // Class periods: a row a grade, class and week, six cells each.
    std::vector<DbfColumn> period_columns = {{QStringLiteral("SP_GRAAD"), 'C', 3},
                                             {QStringLiteral("SP_KLAS"), 'C', 3},
                                             {QStringLiteral("SP_ONNIE"), 'C', 30},
                                             {QStringLiteral("SP_WEEK"), 'N', 2}};
    for (int i = 0; i < 6; ++i) {
        period_columns.push_back({QStringLiteral("SP_SEL%1").arg(i), 'N', 2});
    }
    std::vector<QStringList> periods;
    for (int grade = 8; grade <= 12; ++grade) {
        for (int week = 1; week <= 4; ++week) {
            QStringList p = {QString::number(grade), QStringLiteral("A"),
                             u8(kStaff[std::size_t(grade)].surname), QString::number(week)};
            for (int i = 0; i < 6; ++i) {
                p << QString::number((grade + week + i) % 7 + 1);
            }
            periods.push_back(p);
        }
    }
    const QString period_table = winpath::join(general, QStringLiteral("s_b_prs.dbf"));
    fs.write_all(period_table, dbf_table(period_columns, periods));
    files << fs.native(period_table);
}

}  // namespace

DemoSummary write_demo_tree(const QString& native_root, int year, ui::Dialogs& dialogs) {
    QDir().mkpath(native_root);
    const QString drive = QStringLiteral("C:");
    const platform::DriveMap map = platform::DriveMap::explicit_map({{drive, native_root}});

    DemoSummary summary;
    summary.drive = drive;
    summary.year = QString::number(year);

    Rng rng(0x44454D4Fu);
    std::vector<Particulars> people;
    people.reserve(std::size(kStaff));
    for (std::size_t i = 0; i < std::size(kStaff); ++i) {
        people.push_back(particulars_of(kStaff[i], static_cast<int>(i), year, rng));
    }

    for (int y : {year - 1, year}) {
        const bool current = y == year;
        auto session = Session::on_drive(dialogs, map, drive, QString::number(y));
        YearWriter writer(*session, year, current, people, summary.files);
        writer.run();
        if (current) {
            write_demo_roster(*session, summary.files);
            write_demo_lurits_workbook(*session, year, summary.files);
            summary.staff = writer.staff;
            summary.inactive = writer.inactive;
            summary.deleted = writer.deleted;
            summary.members = writer.members;
            summary.staff_folder_native = session->fs().native(session->folders.staff);
            summary.general_folder_native = session->fs().native(session->folders.general_year);

            const QString network =
                winpath::join(session->folders.workstation, QStringLiteral("network.dta"));
            session->fs().write_all(network, network_file(session->folders));
            summary.files << session->fs().native(network);

            // The subject code list of the suite home (where the suite's programs are
            // installed), as the suite ships it: quoted names, a "?" for an apostrophe.
            const QString home = drive + QStringLiteral("\\Program Files (x86)");
            session->fs().create_folder(home);
            const QString codes = winpath::join(home, QStringLiteral("vakkodes grade r-12.csv"));
            session->fs().write_all(codes, cp1252::encode(QString::fromUtf8(kSubjectCodes)));
            summary.files << session->fs().native(codes);

            const QString language =
                winpath::join(session->folders.workstation, QStringLiteral("language.txt"));
            korvel::quoted::Writer w;
            w.boolean(true).end_line();
            session->fs().write_all(language, w.bytes());
            summary.files << session->fs().native(language);
        }
    }
    write_legacy_year(dialogs, map, drive, year, people, summary.files);
    return summary;
}

}  // namespace korvel::shell
