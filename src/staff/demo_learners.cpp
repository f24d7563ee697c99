#include "staff/demo_learners.h"

#include <QDir>

#include "staff/learner_subjects.h"

namespace korvel::staff {

namespace {

// The grade's subject table: code and subject number; a subject without a number counts for
// nothing in the rebuild.
const std::vector<std::pair<QString, int>> kSubjects = {
    {"AFR HT", 1101},  {"ENG EAT", 1202}, {"WISK", 1301}, {"WISKGELT", 1302}, {"LO", 1401},
    {"FIS WET", 1501}, {"LEWW", 1502},    {"GEOG", 1601}, {"GESK", 1602},     {"REKENK", 1701},
    {"BESTUD", 1702},  {"EKON", 1703},    {"TOER", 1801}, {"RTT", 1901},      {"VERBR", 1902},
    {"IGO", 1903},     {"KUNS", 0},
};

using Row = std::vector<std::pair<QString, QString>>;

struct Grade {
    const char* grade;
    std::vector<Row> classes;
};

// Group 1 (cells 1 to 20) the languages and compulsory subjects, group 2 (21 to 40) the
// choices, group 3 (41 to 50) what the learner programs keep beside them: a teacher still
// to be appointed ("*") and a post number only the learner side knows.
Row row(Row group1, Row group2, Row group3 = {}) {
    group1.resize(20);
    group2.resize(20);
    Row r = group1;
    r.insert(r.end(), group2.begin(), group2.end());
    r.insert(r.end(), group3.begin(), group3.end());
    return r;
}

std::vector<Grade> demo_grades() {
    return {
        {"12",
         {
             row({{"AFR HT", "004"}, {"ENG EAT", "005"}, {"WISK", "001"}, {"LO", "014"}},
                 {{"FIS WET", "003"}, {"LEWW", "007"}, {"GEOG", "009"}}),
             row({{"AFR HT", "002"}, {"ENG EAT", "005"}, {"WISK", "011"}, {"LO", "014"}},
                 {{"BESTUD", "022"}, {"EKON", "022"}, {"GEOG", "023"}}),
             row({{"AFR HT", "004"}, {"ENG EAT", "005"}, {"WISKGELT", "018"}, {"LO", "014"}},
                 {{"TOER", "015"}, {"RTT", "1203"}, {"KUNS", "021"}}, {{"GEOG", "*"}}),
             row({{"AFR HT", "002"}, {"ENG EAT", "005"}, {"WISK", "001"}, {"LO", "014"}},
                 {{"LEWW", "007"}, {"GEOG", "023"}}),
         }},
        {"11",
         {
             row({{"AFR HT", "004"}, {"ENG EAT", "005"}, {"WISK", "006"}, {"LO", "014"}},
                 {{"FIS WET", "016"}, {"LEWW", "007"}, {"GESK", "008"}}),
             row({{"AFR HT", "004"}, {"ENG EAT", "005"}, {"WISK", "024"}, {"LO", "014"}},
                 {{"REKENK", "013"}, {"IGO", "020"}, {"GEOG", "023"}}),
             row({{"AFR HT", "004"}, {"ENG EAT", "005"}, {"WISKGELT", "018"}, {"LO", "014"}},
                 {{"TOER", "015"}, {"RTT", "1203"}, {"VERBR", "019"}}, {{"IGO", "099"}}),
         }},
    };
}

}  // namespace

int write_demo_learner_tables(const QString& native_admin, int year) {
    int written = 0;
    const QString yy = QStringLiteral("%1").arg(year % 100, 2, 10, QLatin1Char('0'));
    for (const Grade& g : demo_grades()) {
        LearnerTables t;
        t.subjects = kSubjects;
        t.classes = g.classes;
        const int classes = static_cast<int>(g.classes.size());
        for (int i = 0; i < 22 * classes; ++i) {
            LearnerTables::Learner l;
            l.class_number = i % classes + 1;
            l.state = i % 17 == 16 ? QStringLiteral("*") : QString();  // learners who left
            l.deleted = i == 5;
            t.learners.push_back(l);
        }
        const QString folder = native_admin + QStringLiteral("/L") + QLatin1String(g.grade) + yy;
        if (QDir().mkpath(folder) && write_learner_tables(folder, t)) {
            ++written;
        }
    }
    return written;
}

}  // namespace korvel::staff
