#include <gtest/gtest.h>

#include <QDate>
#include <QDir>
#include <QFile>
#include <QLockFile>
#include <QTemporaryDir>
#include <cstring>
#include <functional>

#include "app/cli.h"
#include "platform/codepage.h"
#include "platform/user.h"
#include "shell/session.h"
#include "staff/staff_register.h"
#include "store/record.h"
#include "store/record_layouts.h"
#include "ui/scripted_dialogs.h"

namespace {

using korvel::store::serial_from_date;

// A demo tree in a temporary folder, with the paths of its year.
struct Tree {
    QTemporaryDir tmp;
    QString year = QString::number(QDate::currentDate().year());
    QString root() const { return tmp.path(); }
    QString staff(const QString& name = {}) const {
        return root() + "/VESPARINE/STAFF/P" + year + (name.isEmpty() ? "" : "/" + name);
    }
    QString general(const QString& name) const {
        return root() + "/VESPARINE/GENERAL/G" + year + "/" + name;
    }
};

struct CliRun {
    int code;
    QStringList lines;
    QString err;
};

CliRun cli(const QStringList& args) {
    QString out, err;
    QTextStream o(&out), e(&err);
    const int code = korvel::app::run_cli(args, o, e);
    o.flush();
    e.flush();
    return {code, out.split('\n', Qt::SkipEmptyParts), err};
}

CliRun check(const Tree& t, const QStringList& more = {}) {
    return cli(QStringList{"check", "--drive", "C:=" + t.root(), "--year", t.year} + more);
}

void make_demo(Tree& t) {
    ASSERT_EQ(cli({"demo", t.root()}).code, 0);
}

QByteArray read(const QString& path) {
    QFile f(path);
    EXPECT_TRUE(f.open(QIODevice::ReadOnly)) << path.toStdString();
    return f.readAll();
}
void write(const QString& path, const QByteArray& bytes) {
    QFile f(path);
    ASSERT_TRUE(f.open(QIODevice::WriteOnly | QIODevice::Truncate));
    f.write(bytes);
}
void append(const QString& path, const QByteArray& bytes) {
    write(path, (QFile::exists(path) ? read(path) : QByteArray()) + bytes);
}
// Bytes put at an offset of a record (from 1) of a file.
void patch(const QString& path, int length, int record, int offset, const QByteArray& bytes) {
    QByteArray all = read(path);
    all.replace(qsizetype(record - 1) * length + offset, bytes.size(), bytes);
    write(path, all);
}
QByteArray as_bytes(double d) {
    return QByteArray(reinterpret_cast<const char*>(&d), sizeof d);
}
QByteArray as_bytes(std::int16_t v) {
    return QByteArray(reinterpret_cast<const char*>(&v), sizeof v);
}
QByteArray text(const QString& s, int width) {
    return korvel::cp1252::encode(s.leftJustified(width, ' ', true));
}
// The first staff record of the demo, with its post number set.
QByteArray staff_record(const Tree& t, const QString& post) {
    QByteArray r = read(t.staff("prs_alg_random.txt")).left(korvel::store::PRSALG.record_length);
    r.replace(0, 5, text(post, 5));
    return r;
}
QString first_post(const Tree& t) {
    return QString::fromLatin1(read(t.staff("prs_alg_random.txt")).left(5)).trimmed();
}
QByteArray lock(const QString& user, const QDate& taken, const QString& program) {
    return text(user, 50) + as_bytes(serial_from_date(taken)) + text(program, 20) +
           text("STAFF", 10) + as_bytes(std::int16_t(2026)) + text("7001015009088", 50);
}

// Closing the register drops a deleted record and leaves its address record an orphan, a
// finding for a person: the demo's deleted member becomes inactive.
void without_deleted_staff(const Tree& t) {
    constexpr int kLength = korvel::store::PRSALG.record_length;
    QByteArray all = read(t.staff("prs_alg_random.txt"));
    for (qsizetype at = 0; at + kLength <= all.size(); at += kLength) {
        if (all.at(at + 5) == 'D') {
            all[at + 5] = '*';
        }
    }
    write(t.staff("prs_alg_random.txt"), all);
}

}  // namespace

TEST(DataCheck, TheDemoTreeIsClean) {
    Tree t;
    make_demo(t);
    const CliRun r = check(t);
    EXPECT_EQ(r.code, 0) << r.lines.join('\n').toStdString();
    EXPECT_TRUE(r.lines.isEmpty());
}

// A closed year has neither attendance nor a school record of its own; undoing a conversion
// keeps the files in save; a closing at work keeps its journal and new folder beside the years.
// None of it is a fault, but a journal whose closing is gone is.
TEST(DataCheck, WhatTheProgramKeepsIsNoFindingButAStaleJournalIs) {
    Tree t;
    make_demo(t);
    const QString next = QString::number(t.year.toInt() + 1);
    ASSERT_EQ(cli({"year-end", "--drive", "C:=" + t.root(), "--from", t.year, "--to", next}).code,
              0);
    t.year = next;
    QDir().mkpath(t.staff("save/voor herstel 2026-11-23 10.00.00"));
    write(t.staff("save/voor herstel 2026-11-23 10.00.00/prs_alg_random.txt"), "old");
    write(t.staff("save/s_b_prs.dbf"), "table");
    write(t.root() + "/ProgramData/VESPARINE/networklock.txt", "#FALSE#\r\n");
    const QString years = t.root() + "/VESPARINE/STAFF/";
    QDir().mkpath(years + "~yearend.new");
    write(years + "~yearend.switch", "journal");
    {
        QLockFile closing(years + "~yearend.lock");
        ASSERT_TRUE(closing.lock());
        const CliRun r = check(t);
        EXPECT_TRUE(r.lines.isEmpty()) << r.lines.join('\n').toStdString();
    }
    const CliRun r = check(t);
    EXPECT_TRUE(r.lines.join('\n').contains("~yearend.switch: left behind by an interrupted"))
        << r.lines.join('\n').toStdString();
}

TEST(DataCheck, EachFaultGivesItsFinding) {
    constexpr int kAlg = 4103;
    struct Case {
        const char* name;
        std::function<void(const Tree&)> damage;
        const char* finding;  // a line of the output holds this
        int findings;         // lines in all
    };
    const Case cases[] = {
        {"cut short",
         [](const Tree& t) {
             const QByteArray all = read(t.staff("prs_alg_random.txt"));
             write(t.staff("prs_alg_random.txt"), all.left(all.size() - 100));
         },
         "4003 bytes left over", 1},
        {"NUL in a text",
         [](const Tree& t) {
             patch(t.staff("prs_alg_random.txt"), kAlg, 1, 6 + 2, QByteArray(1, '\0'));
         },
         "record 1 PA_VAN: a NUL byte in the text", 1},
        {"part of a day",
         [](const Tree& t) {
             patch(t.staff("prs_alg_random.txt"), kAlg, 2, 125, as_bytes(30000.5));
         },
         "record 2 PA_G_DATUM: a date that is not a whole day", 1},
        {"before 1900",
         [](const Tree& t) { patch(t.staff("prs_alg_random.txt"), kAlg, 2, 125, as_bytes(-3.0)); },
         "PA_G_DATUM: a date outside 1900-2100", 1},
        {"years the form cannot show",
         [](const Tree& t) {
             patch(t.staff("prs_alg_random.txt"), kAlg, 3, 3032, as_bytes(std::int16_t(-5)));
         },
         "record 3 PO_JRE_SKL: -5 is not years", 1},
        {"duplicate post number",
         [](const Tree& t) {
             append(t.staff("prs_alg_random.txt"), staff_record(t, first_post(t)));
         },
         "is held by active record 1 as well", 1},
        {"blank post number",
         [](const Tree& t) { append(t.staff("prs_alg_random.txt"), staff_record(t, "")); },
         "PA_POS_NR: a blank post number", 1},
        {"post number no file may take",
         [](const Tree& t) { append(t.staff("prs_alg_random.txt"), staff_record(t, "1/2")); },
         "holds a character no file name may hold", 4},  // and its three companions missing
        {"no attendance record",
         [](const Tree& t) {
             const QByteArray all = read(t.staff("prs_afw_random.txt"));
             write(t.staff("prs_afw_random.txt"), all.left(all.size() - 1118));
         },
         "has no record in prs_afw_random.txt", 1},
        {"orphan subject record",
         [](const Tree& t) {
             append(t.staff("prs_vak_random.txt"), text("ZZ99", 5) + QByteArray(1155, ' '));
         },
         "no staff record has post number ZZ99", 1},
        {"2 GB, past the records the program counts",
         [](const Tree& t) {
             QFile f(t.staff("prs_nme_random.txt"));
             ASSERT_TRUE(f.open(QIODevice::ReadWrite) && f.resize(qint64(7642291) * 281));
         },
         "7642291 records: the program counts only the first 32767", 1},
        {"interrupted year-end",
         [](const Tree& t) { QDir().mkpath(t.root() + "/VESPARINE/STAFF/~yearend.new"); },
         "left behind by an interrupted year-end", 1},
        {"lock older than a day",
         [](const Tree& t) {
             append(t.general("user_lock_record.txt"),
                    lock("SOMEBODY", QDate::currentDate().addDays(-3), "KORVEL"));
         },
         "more than a day ago", 1},
        {"lock of a program that does not run",
         [](const Tree& t) {
             append(t.general("user_lock_record.txt"),
                    lock(korvel::platform::current_user(), QDate::currentDate(), "NOSUCHPROGRAM"));
         },
         "NOSUCHPROGRAM does not run on this workstation", 1},
        {"interrupted replace", [](const Tree& t) { write(t.staff("prs_alg_random.new"), "half"); },
         "prs_alg_random.new: left behind by an interrupted replace", 1},
        {"settings file that does not parse",
         [](const Tree& t) { write(t.general("kleur_drukker.txt"), "#NOTHING#\r\n"); },
         "does not parse", 1},
        {"link out of the tree",
         [](const Tree& t) {
             QFile::remove(t.staff("sbi_kde_random.txt"));
             QFile::link(QDir::tempPath(), t.staff("sbi_kde_random.txt"));
         },
         "outside the data tree: not read", 1},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        Tree t;
        make_demo(t);
        QFile::remove(t.general("kleur_drukker.txt"));  // a clean start for its case
        c.damage(t);
        const CliRun r = check(t);
        EXPECT_EQ(r.code, 1);
        EXPECT_EQ(r.lines.size(), c.findings) << r.lines.join('\n').toStdString();
        EXPECT_EQ(r.lines.filter(c.finding).size(), 1) << r.lines.join('\n').toStdString();
    }
}

TEST(DataCheck, FindingsComeInTheLanguageAskedFor) {
    Tree t;
    make_demo(t);
    const QByteArray all = read(t.staff("prs_alg_random.txt"));
    write(t.staff("prs_alg_random.txt"), all.left(all.size() - 100));
    patch(t.staff("prs_alg_random.txt"), 4103, 3, 3032, as_bytes(std::int16_t(-5)));
    const CliRun r = check(t, {"--lang", "af"});
    EXPECT_EQ(r.lines.filter(QString::fromUtf8("4003 grepe bly oor")).size(), 1);
    EXPECT_EQ(r.lines.filter(QString::fromUtf8("-5 is nie jare nie (0 tot 99)")).size(), 1)
        << r.lines.join('\n').toStdString();
}

TEST(DataCheck, ATreeThatIsNotThereCannotBeRead) {
    Tree t;
    make_demo(t);
    const CliRun r = cli({"check", "--drive", "C:=" + t.root(), "--year", "1999"});
    EXPECT_EQ(r.code, 2);
    EXPECT_TRUE(r.err.contains("DOES NOT EXIST")) << r.err.toStdString();
}

// The faults the program mends itself, planted in two copies of one tree: the repair of one
// leaves it clean, and its staff files as the program's own opening and closing of the
// register leave the other, but for the companion records made on demand.
TEST(DataCheck, RepairDoesWhatTheProgramDoesAndNothingElse) {
    Tree repaired, by_program;
    for (Tree* t : {&repaired, &by_program}) {
        make_demo(*t);
        without_deleted_staff(*t);
        append(t->staff("prs_alg_random.txt"), staff_record(*t, first_post(*t)));
        const QByteArray afw = read(t->staff("prs_afw_random.txt"));
        write(t->staff("prs_afw_random.txt"), afw.left(afw.size() - 1118));
        write(t->staff("prs_nme_random.new"), "half");
        QDir().mkpath(t->root() + "/VESPARINE/STAFF/~yearend.new");
        append(t->general("user_lock_record.txt"),
               lock("SOMEBODY", QDate::currentDate().addDays(-3), "KORVEL"));
    }
    const QByteArray damaged = read(repaired.staff("prs_alg_random.txt"));

    const CliRun r = check(repaired, {"--repair"});
    EXPECT_EQ(r.code, 0) << r.lines.join('\n').toStdString() << r.err.toStdString();
    EXPECT_TRUE(r.err.contains("freed the lock STAFF=7001015009088")) << r.err.toStdString();
    EXPECT_EQ(check(repaired).code, 0);
    // The dated copy beside the year's folder holds the files as they were.
    const QStringList copies = QDir(repaired.root() + "/VESPARINE/STAFF")
                                   .entryList({"P" + repaired.year + " (*"}, QDir::Dirs);
    ASSERT_EQ(copies.size(), 1);
    EXPECT_EQ(read(repaired.root() + "/VESPARINE/STAFF/" + copies.first() + "/prs_alg_random.txt"),
              damaged);

    {
        korvel::ui::ScriptedDialogs dialogs;
        auto session = korvel::shell::Session::on_drive(
            dialogs, korvel::platform::DriveMap::explicit_map({{"C:", by_program.root()}}),
            "C:", by_program.year);
        korvel::staff::StaffRegister educators(*session, true);
        ASSERT_TRUE(educators.form_load());
        korvel::staff::StaffRegister employees(*session, false);
        employees.form_load();
        employees.staff_exit_click();
    }
    for (const char* name : {"prs_alg_random.txt", "prs_nme_random.txt"}) {
        EXPECT_EQ(read(repaired.staff(name)), read(by_program.staff(name))) << name;
    }
    for (const char* name : {"prs_add_random.txt", "prs_vak_random.txt", "prs_afw_random.txt",
                             "prs_lne_random.txt", "bhr_lgm_random.txt"}) {
        const QByteArray program = read(by_program.staff(name));
        EXPECT_TRUE(read(repaired.staff(name)).startsWith(program)) << name;
    }
}

// While another workstation compacts, the ".new" files are its live work: the repair leaves the
// tree as it is and says why.
TEST(DataCheck, RepairWaitsWhileTheStaffFilesAreCompacted) {
    Tree t;
    make_demo(t);
    write(t.staff("prs_nme_random.new"), "half");
    korvel::ui::ScriptedDialogs dialogs;
    auto other = korvel::shell::Session::on_drive(
        dialogs, korvel::platform::DriveMap::explicit_map({{"C:", t.root()}}), "C:", t.year);
    std::unique_ptr<korvel::platform::HeldLock> compacting;
    ASSERT_EQ(other->lock_folder(other->folders.staff, &compacting),
              korvel::store::Compaction::Done);

    const CliRun r = check(t, {"--repair"});
    EXPECT_EQ(r.code, 2);
    EXPECT_TRUE(r.err.contains("being compacted")) << r.err.toStdString();
    EXPECT_EQ(read(t.staff("prs_nme_random.new")), "half");
    EXPECT_TRUE(QDir(t.root() + "/VESPARINE/STAFF")
                    .entryList({"P" + t.year + " (*"}, QDir::Dirs)
                    .isEmpty());
}
