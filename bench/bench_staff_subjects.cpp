// The staff subject rebuild over a large school: 12 grades of 150 learners, each learner in a
// subject row of its own with 50 subject cells (90,000 cells), and 120 staff. The argument is
// how many teachers each subject column of a grade has: with 3, learners' rows repeat (the
// same choices and teachers); with 150 every row differs. The floor is reading every file the
// rebuild reads once (the three learner tables of each grade, the school record and the
// subject file), in the same run; for the recreating rebuild, that and the new subject file
// written beside, synced and put in place.

#include <benchmark/benchmark.h>

#include <QDir>
#include <QFile>
#include <QSaveFile>
#include <QTemporaryDir>
#include <map>
#include <memory>

#include "against_floor.h"
#include "shell/session.h"
#include "staff/learner_subjects.h"
#include "staff/staff_subjects.h"
#include "ui/scripted_dialogs.h"

using namespace korvel;
using namespace korvel::store;

namespace {

constexpr int kGrades = 12;
constexpr int kLearners = 150;
constexpr int kStaff = 120;

QString post_of(int n) {
    return QStringLiteral("%1").arg(n, 3, 10, QLatin1Char('0'));
}

struct School {
    explicit School(int teachers) {
        root = dir.path();
        const QString staff = root + "/VESPARINE/STAFF/P2026";
        const QString general = root + "/VESPARINE/GENERAL/G2026";
        QDir().mkpath(staff);
        QDir().mkpath(general);
        Record skl(SKL);
        skl.clear();
        for (int g = 1; g <= kGrades; ++g) {
            skl.set_text(SKL["SD_ST"], QString::number(g), g);
        }
        write(general + "/skl_dta_random.txt", skl.bytes());
        files << general + "/skl_dta_random.txt";

        Record r(PRSVAK);
        for (int i = 1; i <= kStaff; ++i) {
            r.clear();
            r.set_text(PRSVAK["PV_POS_NR"], post_of(i));
            subjects_before += r.bytes();
        }
        subject_file = staff + "/prs_vak_random.txt";
        write(subject_file, subjects_before);
        files << subject_file;

        for (int g = 1; g <= kGrades; ++g) {
            staff::LearnerTables t;
            for (int c = 0; c < staff::kSubjectCells; ++c) {
                t.subjects.emplace_back(QStringLiteral("VAK%1").arg(c), 1000 + c);
            }
            for (int i = 1; i <= kLearners; ++i) {
                t.learners.push_back({i % 30 == 0 ? QStringLiteral("*") : QString(), i, false});
                std::vector<std::pair<QString, QString>> cells;
                for (int c = 0; c < staff::kSubjectCells; ++c) {
                    const int teacher = ((g * 50 + c) * 3 + i % teachers) % kStaff + 1;
                    cells.emplace_back(QStringLiteral("VAK%1").arg(c), post_of(teacher));
                }
                t.classes.push_back(cells);
            }
            const QString folder = root + QStringLiteral("/VESPARINE/ADMIN/L%1%2").arg(g).arg(26);
            QDir().mkpath(folder);
            staff::write_learner_tables(folder, t);
            for (const char* name : {"ppl_cmp.dbf", "pi3.dbf", "vakdta.dbf"}) {
                files << folder + u'/' + QLatin1String(name);
            }
        }
        session =
            shell::Session::on_drive(dialogs, platform::DriveMap::explicit_map({{"C:", root}}),
                                     QStringLiteral("C:"), QStringLiteral("2026"));
    }

    static void write(const QString& path, const QByteArray& bytes) {
        QFile f(path);
        f.open(QIODevice::WriteOnly | QIODevice::Truncate);
        f.write(bytes);
    }

    QTemporaryDir dir;
    QString root;
    QString subject_file;
    QByteArray subjects_before;
    QStringList files;
    ui::ScriptedDialogs dialogs;
    std::unique_ptr<shell::Session> session;
};

School& school(int teachers) {
    static std::map<int, std::unique_ptr<School>> schools;
    std::unique_ptr<School>& s = schools[teachers];
    if (!s) {
        s = std::make_unique<School>(teachers);
    }
    return *s;
}

// The bytes of every file the rebuild reads, each read once.
qint64 read_every_file(const School& s) {
    qint64 total = 0;
    for (const QString& path : s.files) {
        QFile f(path);
        f.open(QIODevice::ReadOnly);
        total += f.readAll().size();
    }
    return total;
}

// The floor of the recreating rebuild, which must also write the new subject file beside the
// old, make it durable and put it in the old one's place: the reads above, then that write.
void read_once_and_replace_subject_file(const School& s) {
    benchmark::DoNotOptimize(read_every_file(s));
    QSaveFile out(s.subject_file);  // beside, synced, renamed over
    out.open(QIODevice::WriteOnly);
    out.write(s.subjects_before);
    out.commit();
}

// The goal: the rebuild under half a second, and within three times its floor.
constexpr double kMostSeconds = 0.5;

void rebuild(benchmark::State& state, ui::Answer answer) {
    School& s = school(static_cast<int>(state.range(0)));
    staff::DbfLearnerSubjects learners(*s.session);
    staff::StaffSubjects form(*s.session, learners);
    const auto floor = [&] {
        if (answer == ui::Answer::Yes)
            read_once_and_replace_subject_file(s);
        else
            benchmark::DoNotOptimize(read_every_file(s));
    };
    bench::against_floor(
        state, floor, [&] { form.recreate_staff_subjects(); }, kMostSeconds,
        [&] {
            s.session->close_file(Code::PRSVAK);
            School::write(s.subject_file, s.subjects_before);
            s.dialogs.answer(answer);
        });
    state.counters["learners"] = form.outcome.learners;
    state.counters["added"] = form.outcome.subjects_added;
    state.counters["written"] = form.outcome.records_written;
}

void BM_RebuildMerge(benchmark::State& state) {
    rebuild(state, ui::Answer::No);
}
BENCHMARK(BM_RebuildMerge)->Arg(3)->Arg(150)->Unit(benchmark::kMillisecond);

// Its floor: the files read and the subject file replaced once.
void BM_RebuildRecreate(benchmark::State& state) {
    rebuild(state, ui::Answer::Yes);
}
BENCHMARK(BM_RebuildRecreate)->Arg(3)->Arg(150)->Unit(benchmark::kMillisecond);

// The floor alone: the bytes of every file the rebuild reads, read once.
void BM_ReadFilesOnce(benchmark::State& state) {
    School& s = school(static_cast<int>(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize(read_every_file(s));
    state.counters["files"] = static_cast<double>(s.files.size());
}
BENCHMARK(BM_ReadFilesOnce)->Arg(3)->Arg(150)->Unit(benchmark::kMillisecond);

void BM_ReadOnceAndReplaceSubjectFile(benchmark::State& state) {
    School& s = school(static_cast<int>(state.range(0)));
    for (auto _ : state)
        read_once_and_replace_subject_file(s);
}
BENCHMARK(BM_ReadOnceAndReplaceSubjectFile)->Arg(3)->Arg(150)->Unit(benchmark::kMillisecond);

// Reading and taking apart the learner tables alone: the part of the rebuild that no walk of
// the cells can save.
void BM_ReadLearnerTables(benchmark::State& state) {
    School& s = school(static_cast<int>(state.range(0)));
    staff::DbfLearnerSubjects learners(*s.session);
    for (auto _ : state) {
        int rows = 0;
        for (int g = 1; g <= kGrades; ++g) {
            const auto grade = learners.read_grade(s.session->folders.admin +
                                                   QStringLiteral("\\L%1%2").arg(g).arg(26));
            rows += grade ? grade->class_rows() : 0;
        }
        benchmark::DoNotOptimize(rows);
    }
}
BENCHMARK(BM_ReadLearnerTables)->Arg(150)->Unit(benchmark::kMillisecond);

}  // namespace
