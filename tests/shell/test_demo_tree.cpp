// The demo tree: what it holds, read back through the record store, and that it comes out the
// same to the byte on every run.

#include <gtest/gtest.h>

#include <QDate>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QMap>
#include <QRegularExpression>
#include <QSet>
#include <QTemporaryDir>

#include "platform/drive_map.h"
#include "shell/demo_tree.h"
#include "shell/helpers.h"
#include "shell/session.h"
#include "ui/scripted_dialogs.h"

namespace korvel::shell {
namespace {

using store::Code;
using store::Record;

constexpr int kYear = 2026;

// Thirteen digits that pass the identity number check without a warning.
bool id_is_valid(const QString& id) {
    static const QRegularExpression digits(QStringLiteral("^[0-9]{13}$"));
    const IdCheck check = valid_id_number(id, QString(), false);
    return digits.match(id).hasMatch() && check.valid && check.message.isEmpty();
}

QMap<QString, QByteArray> files_below(const QString& root) {
    QMap<QString, QByteArray> out;
    QDirIterator it(root, QDir::Files, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QString path = it.next();
        QFile f(path);
        EXPECT_TRUE(f.open(QIODevice::ReadOnly)) << path.toStdString();
        out.insert(QDir(root).relativeFilePath(path), f.readAll());
    }
    return out;
}

class DemoTree : public ::testing::Test {
  protected:
    static void SetUpTestSuite() {
        dir_ = new QTemporaryDir;
        ui::UnattendedDialogs demo_answers;
        summary_ = new DemoSummary(write_demo_tree(dir_->path(), kYear, demo_answers));
    }
    static void TearDownTestSuite() {
        delete summary_;
        delete dir_;
    }

    // A session on the tree for a year, with every staff file open.
    static std::unique_ptr<Session> open_year(ui::Dialogs& dialogs, int year) {
        auto s = Session::on_drive(
            dialogs, platform::DriveMap::explicit_map({{QStringLiteral("C:"), dir_->path()}}),
            QStringLiteral("C:"), QString::number(year));
        EXPECT_TRUE(s->open_staff_file(QStringLiteral("*")));
        return s;
    }

    static std::vector<Record> records(Session& s, Code code) {
        std::vector<Record> out;
        s.scan_records(code, [&](int, Record& r) { out.push_back(r); });
        return out;
    }

    static QString path(const QString& relative) { return dir_->path() + u'/' + relative; }

    static inline QTemporaryDir* dir_ = nullptr;
    static inline DemoSummary* summary_ = nullptr;
    ui::ScriptedDialogs dialogs_;
};

constexpr const auto& ALG = store::PRSALG;

TEST_F(DemoTree, WritesTheFoldersAndTheSettingsFiles) {
    // The staff and general year folders hold files, checked below.
    for (const char* folder : {"VESPARINE/ADMIN", "VESPARINE/ROSTER/R2026", "VESPARINE/FUNDS/2026",
                               "VESPARINE/HBOOKS", "VESPARINE/BUDGET/B2026"}) {
        EXPECT_TRUE(QFileInfo(path(QString::fromLatin1(folder))).isDir()) << folder;
    }
    // The roster folder holds the timetable system's files, with no others.
    EXPECT_EQ(QDir(path(QStringLiteral("VESPARINE/ROSTER/R2026"))).entryList(QDir::Files).size(),
              4);
    for (const char* year : {"2025", "2026"}) {
        EXPECT_TRUE(QFileInfo::exists(path(QStringLiteral("VESPARINE/GENERAL/G") + year +
                                           QStringLiteral("/skl_dta_random.txt"))));
        for (const char* file : {"prs_alg_random.txt", "prs_add_random.txt", "prs_nme_random.txt",
                                 "prs_vak_random.txt", "prs_afw_random.txt", "prs_lne_random.txt",
                                 "sbi_kde_random.txt", "lurits_random.txt", "bhr_lgm_random.txt"}) {
            EXPECT_TRUE(QFileInfo::exists(path(QStringLiteral("VESPARINE/STAFF/P") + year + u'/' +
                                               QString::fromLatin1(file))))
                << year << " " << file;
        }
    }
    for (const QString& file : summary_->files) {
        EXPECT_TRUE(QFileInfo::exists(file)) << file.toStdString();
    }

    QFile network(path(QStringLiteral("ProgramData/VESPARINE/network.dta")));
    ASSERT_TRUE(network.open(QIODevice::ReadOnly));
    EXPECT_EQ(network.readAll(),
              QByteArray("C:\\VESPARINE\\ADMIN\r\nC:\\VESPARINE\\FUNDS\\2026\r\n"
                         "C:\\VESPARINE\\STOCK\\V2026\r\nC:\\VESPARINE\\STAFF\\P2026\r\n"
                         "C:\\VESPARINE\\HBOOKS\r\nC:\\VESPARINE\\ROSTER\\R2026\r\n"
                         "C:\\VESPARINE\\MEDIA\\B2026\r\nC:\\VESPARINE\\BUDGET\\B2026\r\n"));
    QFile language(path(QStringLiteral("ProgramData/VESPARINE/language.txt")));
    ASSERT_TRUE(language.open(QIODevice::ReadOnly));
    EXPECT_EQ(language.readAll(), QByteArray("#TRUE#\r\n"));

    EXPECT_EQ(QFileInfo(summary_->staff_folder_native).canonicalFilePath(),
              QFileInfo(path(QStringLiteral("VESPARINE/STAFF/P2026"))).canonicalFilePath());
}

TEST_F(DemoTree, RunsAreByteIdenticalAndOverwriteCleanly) {
    QTemporaryDir again;
    ui::UnattendedDialogs demo_answers;
    write_demo_tree(again.path(), kYear, demo_answers);
    write_demo_tree(again.path(), kYear, demo_answers);  // over a tree that is already there
    const auto first = files_below(dir_->path());
    const auto second = files_below(again.path());
    EXPECT_EQ(first.keys(), second.keys());
    for (auto it = first.begin(); it != first.end(); ++it) {
        EXPECT_TRUE(second.value(it.key()) == it.value()) << it.key().toStdString();
    }
    EXPECT_GT(first.size(), 20);
}

TEST_F(DemoTree, StaffMasterRecordsAreWhole) {
    auto s = open_year(dialogs_, kYear);
    const auto staff = records(*s, Code::PRSALG);
    ASSERT_EQ(staff.size(), 40u);
    EXPECT_EQ(summary_->staff, 40);

    int educators = 0;
    int employees = 0;
    int inactive = 0;
    int deleted = 0;
    QSet<QString> posts;
    static const QRegularExpression small(QStringLiteral("[a-z]"));
    for (const Record& r : staff) {
        const QString post = r.text(ALG["PA_POS_NR"]).trimmed();
        EXPECT_FALSE(posts.contains(post)) << post.toStdString();
        posts.insert(post);

        const QString id = r.text(ALG["PA_ID_NR"]);
        EXPECT_TRUE(id_is_valid(id)) << post.toStdString() << " " << id.toStdString();
        const auto birth = r.date(ALG["PA_G_DATUM"]);
        ASSERT_TRUE(birth.has_value());
        EXPECT_EQ(id.left(6), birth->toString(QStringLiteral("yyMMdd")));
        const bool male = r.text(ALG["PA_GESLAG"]) == u"M";
        EXPECT_EQ(id[6].digitValue() >= 5, male) << post.toStdString();

        const QString klas = r.text(ALG["PK_KLAS_NR"]).trimmed();
        const bool employee = klas == u"PSS" || klas == u"PS" || klas == u"ADMIN";
        (employee ? employees : educators) += 1;
        EXPECT_EQ(post.startsWith(u'A'), employee) << post.toStdString();
        if (employee) {
            EXPECT_EQ(r.int16(ALG["PA_REQV"]), 0);
        } else {
            EXPECT_GE(r.int16(ALG["PA_REQV"]), 13);
            EXPECT_LE(r.int16(ALG["PA_REQV"]), 15);
            EXPECT_FALSE(r.text(ALG["PK_GRDE"], 1).isEmpty()) << post.toStdString();
        }
        if (r.text(ALG["PA_OD_BL"]) == u"B") {
            EXPECT_GT(r.int16(ALG["PB_SALARIS"]), 0) << post.toStdString();
        }
        const QString state = r.text(ALG["PA_AKTIEF"]);
        inactive += state == u"*" ? 1 : 0;
        deleted += state == u"D" ? 1 : 0;

        // Typed in capitals; only the e-mail address keeps small letters.
        for (const char* name : {"PA_VAN", "PA_NAME", "PA_TITEL", "PA_H_ADR1"}) {
            EXPECT_FALSE(r.text(*ALG.find(name)).contains(small)) << name;
        }
        EXPECT_TRUE(r.text(ALG["PA_EPOS"]).contains(u'@'));
    }
    EXPECT_EQ(educators, 28);
    EXPECT_EQ(employees, 12);
    EXPECT_EQ(inactive, 3);
    EXPECT_EQ(deleted, 1);
    EXPECT_EQ(summary_->inactive, 3);
    EXPECT_EQ(summary_->deleted, 1);

    // An accented surname survives the code page.
    const bool accented = std::any_of(staff.begin(), staff.end(), [](const Record& r) {
        return r.text(ALG["PA_VAN"]) == QString::fromUtf8("MéNIèRE");
    });
    EXPECT_TRUE(accented);

    // The name file mirrors the master file record for record.
    const auto names = records(*s, Code::PRSNME);
    ASSERT_EQ(names.size(), staff.size());
    for (std::size_t i = 0; i < names.size(); ++i) {
        EXPECT_EQ(names[i].text(store::PRSNME["PN_POS_NR"]), staff[i].text(ALG["PA_POS_NR"]));
        EXPECT_TRUE(names[i].text(store::PRSNME["PN_NAAM"]).endsWith(staff[i].text(ALG["PA_VAN"])));
    }
}

TEST_F(DemoTree, EveryActivePostHasOneAttendanceAndOneSubjectRecord) {
    auto s = open_year(dialogs_, kYear);
    QSet<QString> active;
    for (const Record& r : records(*s, Code::PRSALG)) {
        if (r.text(ALG["PA_AKTIEF"]).isEmpty()) {
            active.insert(r.text(ALG["PA_POS_NR"]));
        }
    }
    ASSERT_EQ(active.size(), 36);

    constexpr const auto& AFW = store::PRSAFW;
    QMap<QString, int> attendance;
    int marks = 0;
    for (const Record& r : records(*s, Code::PRSAFW)) {
        const QString post = r.text(AFW["PF_POS_NR"]);
        attendance[post] += 1;
        for (int day = 1; day <= 365; ++day) {
            const QString mark = r.text(AFW["PF_DAG"], day);
            const QString reason = r.text(AFW["PF_REDE"], day);
            if (mark == u".") {
                EXPECT_EQ(reason, u"..");
                continue;
            }
            ++marks;
            EXPECT_TRUE(mark == u"a" || mark == u"l" || mark == u"u") << mark.toStdString();
            EXPECT_LT(QDate(kYear, 1, 1).addDays(day - 1).dayOfWeek(), 6)
                << post.toStdString() << " day " << day;
            if (reason != u"..") {
                ASSERT_EQ(r.raw_text(AFW["PF_REDE"], day).size(), 2);
                const int n = r.raw_text(AFW["PF_REDE"], day).trimmed().toInt();
                EXPECT_TRUE(n >= 1 && n <= 11) << reason.toStdString();
                EXPECT_EQ(r.raw_text(AFW["PF_REDE"], day), QString::number(n).rightJustified(2));
            }
        }
    }
    EXPECT_EQ(QSet<QString>(attendance.keyBegin(), attendance.keyEnd()), active);
    for (int n : attendance) {
        EXPECT_EQ(n, 1);
    }
    EXPECT_GT(marks, 100);

    QMap<QString, int> subjects;
    for (const Record& r : records(*s, Code::PRSVAK)) {
        subjects[r.text(store::PRSVAK["PV_POS_NR"])] += 1;
    }
    for (const QString& post : active) {
        EXPECT_EQ(subjects.value(post), 1) << post.toStdString();
    }
}

TEST_F(DemoTree, ReasonsSchoolAndGoverningBody) {
    auto s = open_year(dialogs_, kYear);
    QStringList reasons;
    for (const Record& r : records(*s, Code::PRSSBI)) {
        reasons << r.text(store::PRSSBI["SBI_TIPE"]);
        EXPECT_EQ(r.text(store::PRSSBI["SBI_BESK"]), reasons.last());
    }
    EXPECT_EQ(reasons.size(), 11);
    EXPECT_EQ(reasons.removeDuplicates(), 0);

    ASSERT_TRUE(s->open_suite_file(QStringLiteral("SKL"), s->folders.school));
    ASSERT_EQ(s->count(Code::SKL), 1);
    ASSERT_TRUE(s->read_record(Code::SKL, 1));
    const Record& school = s->working(Code::SKL);
    EXPECT_EQ(school.text(store::SKL["SD_SKOOL"]), QString::fromUtf8("HOëRSKOOL DUINEVELD"));
    EXPECT_EQ(static_cast<unsigned char>(school.data()[2]), 0xEB);  // ë in Windows-1252
    EXPECT_EQ(school.text(store::SKL["SD_PROV"]), u"WC");
    EXPECT_EQ(school.int16(store::SKL["SD_OUDSTES"]), 1);
    EXPECT_TRUE(school.text(store::SKL["SD_WYK"]).isEmpty());
    EXPECT_FALSE(school.text(store::SKL["SX_HOOF"]).isEmpty());

    QMap<QString, QString> staff_ids;  // ID number -> post
    for (const Record& r : records(*s, Code::PRSALG)) {
        staff_ids.insert(r.text(ALG["PA_ID_NR"]), r.text(ALG["PA_POS_NR"]));
    }
    const auto members = records(*s, Code::BHRLGM);
    ASSERT_EQ(members.size(), 5u);
    EXPECT_EQ(summary_->members, 5);
    int linked = 0;
    for (const Record& m : members) {
        EXPECT_TRUE(id_is_valid(m.text(store::BHRLGM["BL_ID_NR"])));
        const QString post = m.text(store::BHRLGM["BL_POS_NR"]);
        if (!post.isEmpty()) {
            ++linked;
            EXPECT_EQ(staff_ids.value(m.text(store::BHRLGM["BL_ID_NR"])), post);
        }
    }
    EXPECT_EQ(linked, 1);

    int lurits = 0;
    static const QRegularExpression nine(QStringLiteral("^[0-9]{9}$"));
    for (const Record& r : records(*s, Code::PRSLURITS)) {
        ++lurits;
        EXPECT_TRUE(staff_ids.contains(r.text(store::PRSLURITS["LU_ID_NR"])));
        EXPECT_TRUE(nine.match(r.text(store::PRSLURITS["LU_NR"])).hasMatch());
    }
    EXPECT_GE(lurits, 30);
}

TEST_F(DemoTree, SalariesBelongToGoverningBodyPaidStaff) {
    auto s = open_year(dialogs_, kYear);
    QSet<QString> paid;
    for (const Record& r : records(*s, Code::PRSALG)) {
        if (r.text(ALG["PA_OD_BL"]) == u"B" && r.text(ALG["PA_AKTIEF"]).isEmpty()) {
            paid.insert(r.text(ALG["PA_POS_NR"]));
        }
    }
    ASSERT_FALSE(paid.isEmpty());
    constexpr const auto& LNE = store::PRSLNE;
    QMap<QString, int> months;
    for (const Record& r : records(*s, Code::PRSLNE)) {
        const QString post = r.text(LNE["PL_POS_NR"]);
        EXPECT_TRUE(paid.contains(post)) << post.toStdString();
        months[post] += 1;
        EXPECT_EQ(r.int16(LNE["PL_MAAND"]), months[post]);
        EXPECT_GT(r.int16(LNE["PL_SALARIS"]), r.int16(LNE["PL_TAX"]));
    }
    EXPECT_EQ(QSet<QString>(months.keyBegin(), months.keyEnd()), paid);
}

TEST_F(DemoTree, TheYearBeforeHasTheSameStaffAndNoDeletedRecord) {
    auto s = open_year(dialogs_, kYear - 1);
    const auto staff = records(*s, Code::PRSALG);
    EXPECT_EQ(staff.size(), 40u);
    for (const Record& r : staff) {
        EXPECT_NE(r.text(ALG["PA_AKTIEF"]), u"D");
    }
    EXPECT_EQ(records(*s, Code::PRSSBI).size(), 11u);
    EXPECT_FALSE(records(*s, Code::PRSAFW).empty());
}

}  // namespace
}  // namespace korvel::shell
