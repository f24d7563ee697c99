// The attendance register over 1,000 staff members: building a month's grid (which writes the
// weekend erasures back row by row) and saving it, against the floor of reading the attendance
// file once and writing it once, measured in the same run.

#include <benchmark/benchmark.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <memory>

#include "attendance/attendance_register.h"
#include "shell/session.h"
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

}  // namespace
