// The attendance register over 1,000 staff members: building a month's grid (which writes the
// weekend erasures back row by row) and saving it, against the floor of reading the attendance
// file once and writing it once, measured in the same run. The attendance reports over the same
// file: the reason list and the leave totals over the whole year and the monthly summary's grid,
// against the floor of reading the file once, and of reading it beside the staff file.

#include <benchmark/benchmark.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <memory>

#include "against_floor.h"
#include "attendance/attendance_register.h"
#include "attendance/attendance_reports.h"
#include "attendance/leave_totals.h"
#include "reports/recording_device.h"
#include "shell/session.h"
#include "store/default_reasons.h"
#include "ui/scripted_dialogs.h"

using namespace korvel;

namespace {

constexpr int kStaff = 1000;

struct Tree {
    Tree() {
        QDir().mkpath(dir.path() + "/VESPARINE/STAFF/P2026");
        QDir().mkpath(dir.path() + "/ProgramData/VESPARINE/KORVEL");
        session = std::make_unique<shell::Session>(
            dialogs, platform::DriveMap::explicit_map({{"C:", dir.path()}}));
        auto& f = session->folders;
        f.staff = "C:\\VESPARINE\\STAFF\\P2026";
        f.workstation = "C:\\ProgramData\\VESPARINE";
        f.workstation_program = f.workstation + "\\KORVEL";
        session->ledger_year = "2026";
        session->fixed_today = QDate(2026, 3, 10);
        session->open_file(store::Code::PRSALG);
        session->open_file(store::Code::PRSAFW);
        for (int n = 1; n <= kStaff; ++n) {
            auto& r = session->working(store::Code::PRSALG);
            r.clear();
            r.set_text(store::PRSALG["PA_POS_NR"], QString::number(10000 + n));
            r.set_text(store::PRSALG["PA_VAN"], QStringLiteral("VAN WYK %1").arg(n));
            r.set_text(store::PRSALG["PA_NAME"], QStringLiteral("ANNA MARIA"));
            r.set_text(store::PRSALG["PA_TITEL"], QStringLiteral("ME"));
            session->append_record(store::Code::PRSALG);
        }
        // The attendance records in another order than the staff file, each with some days.
        for (int n = kStaff; n >= 1; --n) {
            const QString post = QString::number(10000 + n);
            session->ensure_attendance_record(post);
            auto& r = session->working(store::Code::PRSAFW);
            for (int slot = 60; slot < 91; slot += 1 + n % 5) {
                r.set_text(store::PRSAFW["PF_DAG"], QStringLiteral("a"), slot);
                r.set_text(store::PRSAFW["PF_REDE"], QStringLiteral(" 2"), slot);
            }
            session->write_record(store::Code::PRSAFW, session->state(store::Code::PRSAFW).current);
        }
        afw_path = dir.path() + "/VESPARINE/STAFF/P2026/prs_afw_random.txt";
    }
    QTemporaryDir dir;
    ui::ScriptedDialogs dialogs;
    std::unique_ptr<shell::Session> session;
    QString afw_path;
};

Tree& tree() {
    static Tree t;
    return t;
}

void BM_FloorReadAndWriteOnce(benchmark::State& state) {
    Tree& t = tree();
    for (auto _ : state) {
        QFile f(t.afw_path);
        f.open(QIODevice::ReadWrite);
        const QByteArray bytes = f.readAll();
        f.seek(0);
        f.write(bytes);
        f.close();
        benchmark::DoNotOptimize(bytes.size());
    }
    state.counters["bytes"] = QFileInfo(t.afw_path).size();
}
BENCHMARK(BM_FloorReadAndWriteOnce)->Unit(benchmark::kMillisecond);

void BM_BuildMonthGrid(benchmark::State& state) {
    Tree& t = tree();
    attendance::AttendanceRegister reg(*t.session, true);
    for (auto _ : state) {
        reg.form_load();
        reg.build_grid(3);
        benchmark::DoNotOptimize(reg.afw_grid.rows());
    }
    state.counters["rows"] = reg.afw_grid.rows() - 2;
}
BENCHMARK(BM_BuildMonthGrid)->Unit(benchmark::kMillisecond);

void BM_SaveMonthGrid(benchmark::State& state) {
    Tree& t = tree();
    attendance::AttendanceRegister reg(*t.session, true);
    reg.form_load();
    reg.build_grid(3);
    for (auto _ : state) {
        reg.save_grid();
    }
}
BENCHMARK(BM_SaveMonthGrid)->Unit(benchmark::kMillisecond);

void BM_FloorReadOnce(benchmark::State& state) {
    Tree& t = tree();
    for (auto _ : state) {
        QFile f(t.afw_path);
        f.open(QIODevice::ReadOnly);
        benchmark::DoNotOptimize(f.readAll().size());
    }
}
BENCHMARK(BM_FloorReadOnce)->Unit(benchmark::kMillisecond);

// What every attendance report must read: the staff file (4,103 bytes a person, four times the
// attendance file) beside the attendance file, each once.
void read_staff_and_attendance() {
    const QString afw = tree().afw_path;
    for (const QString& path : {QFileInfo(afw).dir().filePath("prs_alg_random.txt"), afw}) {
        QFile f(path);
        f.open(QIODevice::ReadOnly);
        benchmark::DoNotOptimize(f.readAll().size());
    }
}

void BM_FloorReadStaffAndAttendanceOnce(benchmark::State& state) {
    tree();
    for (auto _ : state)
        read_staff_and_attendance();
}
BENCHMARK(BM_FloorReadStaffAndAttendanceOnce)->Unit(benchmark::kMillisecond);

// The staff of the reports: the staff file read once, in post number order.
void BM_SelectedStaff(benchmark::State& state) {
    Tree& t = tree();
    for (auto _ : state) {
        benchmark::DoNotOptimize(
            attendance::selected_staff(*t.session, reports::AdminChoice::Included).size());
    }
}
BENCHMARK(BM_SelectedStaff)->Unit(benchmark::kMillisecond);

// The file read once as the reports read it: every record into memory.
void BM_BookLoad(benchmark::State& state) {
    Tree& t = tree();
    for (auto _ : state) {
        attendance::AttendanceBook book(*t.session);
        book.load();
        benchmark::DoNotOptimize(book.count());
    }
}
BENCHMARK(BM_BookLoad)->Unit(benchmark::kMillisecond);

// The reports' form over the tree, with the eleven reasons.
struct ReportsForm {
    ReportsForm() : job(device, tree().dialogs), form(*tree().session, job) {
        shell::Session& s = *tree().session;
        s.open_file(store::Code::PRSSBI);
        if (s.count(store::Code::PRSSBI) == 0) {
            for (const char* reason : store::kDefaultReasons) {
                s.working(store::Code::PRSSBI).clear();
                s.working(store::Code::PRSSBI)
                    .set_text(store::PRSSBI["SBI_TIPE"], QString::fromLatin1(reason));
                s.append_record(store::Code::PRSSBI);
            }
        }
        form.form_load();
    }
    reports::RecordingDevice device;
    reports::PrintJob job;
    attendance::AttendanceReports form;
};

// Each report against the goals: under 0.2 seconds, and its ratio to reading the two files.
constexpr double kMostSeconds = 0.2;

void BM_ReasonListYear(benchmark::State& state) {
    ReportsForm r;
    bench::against_floor(
        state, read_staff_and_attendance,
        [&] {
            benchmark::DoNotOptimize(r.form.reason_list_grid({1, 365}).rows());
        },
        kMostSeconds);
}
BENCHMARK(BM_ReasonListYear)->Unit(benchmark::kMillisecond);

void BM_LeaveTotalsYear(benchmark::State& state) {
    ReportsForm r;
    bench::against_floor(
        state, read_staff_and_attendance,
        [&] { benchmark::DoNotOptimize(r.form.leave_totals().total); }, kMostSeconds);
}
BENCHMARK(BM_LeaveTotalsYear)->Unit(benchmark::kMillisecond);

void BM_MonthlySummaryGrid(benchmark::State& state) {
    ReportsForm r;
    r.form.maand_lys_click(2);
    std::vector<int> counts;
    bench::against_floor(
        state, read_staff_and_attendance,
        [&] {
            benchmark::DoNotOptimize(
                r.form.summary_grid(r.form.day_grid(r.form.range), &counts).rows());
        },
        kMostSeconds);
}
BENCHMARK(BM_MonthlySummaryGrid)->Unit(benchmark::kMillisecond);

}  // namespace
