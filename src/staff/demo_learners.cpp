#include "staff/demo_learners.h"

#include <QDir>

#include "staff/learner_subjects.h"

namespace korvel::staff {

namespace {

// The grade's subject table: code and subject number; a subject without a number counts for
// nothing in the rebuild.
const std::vector<std::pair<QString, int>> kSubjects = {
    {"AFR HT", 1010},  {"ENG EAT", 1020}, {"WISK", 2010}, {"WISKGELT", 2020}, {"LO", 6010},
    {"FIS WET", 3010}, {"LEWW", 3020},    {"GEOG", 4020}, {"GESK", 4010},     {"REKENK", 5010},
    {"BESTUD", 5020},  {"EKON", 5030},    {"TOER", 8030}, {"RTT", 8040},      {"VERBR", 8050},
    {"IGO", 8020},     {"KUNS", 0},
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
             row({{"AFR HT", "104"}, {"ENG EAT", "105"}, {"WISK", "101"}, {"LO", "114"}},
                 {{"FIS WET", "103"}, {"LEWW", "107"}, {"GEOG", "109"}}),
             row({{"AFR HT", "102"}, {"ENG EAT", "105"}, {"WISK", "111"}, {"LO", "114"}},
                 {{"BESTUD", "122"}, {"EKON", "122"}, {"GEOG", "123"}}),
             row({{"AFR HT", "104"}, {"ENG EAT", "105"}, {"WISKGELT", "118"}, {"LO", "114"}},
                 {{"TOER", "115"}, {"RTT", "1203"}, {"KUNS", "121"}}, {{"GEOG", "*"}}),
             row({{"AFR HT", "102"}, {"ENG EAT", "105"}, {"WISK", "101"}, {"LO", "114"}},
                 {{"LEWW", "107"}, {"GEOG", "123"}}),
         }},
        {"11",
         {
             row({{"AFR HT", "104"}, {"ENG EAT", "105"}, {"WISK", "106"}, {"LO", "114"}},
                 {{"FIS WET", "116"}, {"LEWW", "107"}, {"GESK", "108"}}),
             row({{"AFR HT", "104"}, {"ENG EAT", "105"}, {"WISK", "124"}, {"LO", "114"}},
                 {{"REKENK", "113"}, {"IGO", "120"}, {"GEOG", "123"}}),
             row({{"AFR HT", "104"}, {"ENG EAT", "105"}, {"WISKGELT", "118"}, {"LO", "114"}},
                 {{"TOER", "115"}, {"RTT", "1203"}, {"VERBR", "119"}}, {{"IGO", "199"}}),
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
