// The staff register's fill over a large school: 5,000 staff records with 5,000 LURITS and
// 5,000 subject records. The floor is reading the three files' bytes once, in the same run. The
// fill also rewrites every shown record (the repair does), so it cannot come near the floor;
// what it must not do is search the LURITS and subject files once per row, which the per-row
// run shows at a tenth of the size.

#include <benchmark/benchmark.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <memory>
#include <vector>

#include "shell/session.h"
#include "staff/staff_register.h"
#include "ui/scripted_dialogs.h"

using namespace korvel;
using namespace korvel::store;

namespace {

QString id_of(int n) {
    return QStringLiteral("80%1").arg(n, 11, 10, QLatin1Char('0'));
}

void write_records(const QString& path, const Layout& layout, int n,
                   const std::function<void(int, Record&)>& fill) {
    QFile f(path);
    f.open(QIODevice::WriteOnly | QIODevice::Truncate);
    Record r(layout);
    std::vector<char> bytes;
    bytes.reserve(static_cast<std::size_t>(n) * layout.record_length);
    for (int i = 1; i <= n; ++i) {
        r.clear();
        fill(i, r);
        bytes.insert(bytes.end(), r.data(), r.data() + r.size());
    }
    f.write(bytes.data(), static_cast<qint64>(bytes.size()));
}

// A school's staff folder; the subject and LURITS files hold every post number and ID number
// in reverse order, so that each per-row search runs half the file on average.
struct School {
    explicit School(int staff) {
        root = dir.path();
        const QString folder = root + "/VESPARINE/STAFF/P2026";
        QDir().mkpath(folder);
        QDir().mkpath(root + "/VESPARINE/GENERAL/G2026");
        alg = folder + "/prs_alg_random.txt";
        vak = folder + "/prs_vak_random.txt";
        lurits = folder + "/lurits_random.txt";
        write_records(alg, PRSALG, staff, [](int i, Record& r) {
            r.set_text(PRSALG["PA_POS_NR"], QString::number(i));
            r.set_text(PRSALG["PA_VAN"], QStringLiteral("VAN DER MERWE %1").arg(i));
            r.set_text(PRSALG["PA_NAME"], QStringLiteral("JOHANNES PETRUS"));
            r.set_text(PRSALG["PA_TITEL"], QStringLiteral("MNR"));
            r.set_text(PRSALG["PA_ID_NR"], id_of(i));
            r.set_text(PRSALG["PK_KLAS_NR"], i % 5 == 0 ? QStringLiteral("PSS") : QString());
            if (i % 5 == 0) {
                r.set_text(PRSALG["PA_POS_NR"], QStringLiteral("A%1").arg(i));
            }
        });
        write_records(vak, PRSVAK, staff, [staff](int i, Record& r) {
            const int n = staff + 1 - i;
            r.set_text(PRSVAK["PV_POS_NR"],
                       n % 5 == 0 ? QStringLiteral("A%1").arg(n) : QString::number(n));
        });
        write_records(lurits, PRSLURITS, staff, [staff](int i, Record& r) {
            r.set_text(PRSLURITS["LU_ID_NR"], id_of(staff + 1 - i));
            r.set_text(PRSLURITS["LU_NR"], QStringLiteral("%1").arg(i, 9, 10, QLatin1Char('0')));
        });
    }

    std::unique_ptr<shell::Session> session() {
        auto s = shell::Session::on_drive(dialogs, platform::DriveMap::explicit_map({{"C:", root}}),
                                          QStringLiteral("C:"), QStringLiteral("2026"));
        return s;
    }

    QTemporaryDir dir;
    QString root, alg, vak, lurits;
    ui::ScriptedDialogs dialogs;
};

void fill(benchmark::State& state, bool per_row) {
    School school(static_cast<int>(state.range(0)));
    auto session = school.session();
    staff::StaffRegister reg(*session, true);
    reg.upkeep.scan_per_row = per_row;
    reg.form_load();  // the first fill makes the address records
    for (auto _ : state) {
        reg.fill_grid();
        benchmark::DoNotOptimize(reg.prs_grid.rows.data());
    }
    state.counters["rows"] = static_cast<double>(reg.prs_grid.rows.size());
}

void BM_FillGrid(benchmark::State& state) {
    fill(state, false);
}
BENCHMARK(BM_FillGrid)->Arg(500)->Arg(5000)->Unit(benchmark::kMillisecond);

void BM_FillGridSearchPerRow(benchmark::State& state) {
    fill(state, true);
}
BENCHMARK(BM_FillGridSearchPerRow)->Arg(500)->Unit(benchmark::kMillisecond);

// The floor: the bytes of the master, subject and LURITS files read once.
void BM_ReadThreeFiles(benchmark::State& state) {
    School school(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        qint64 total = 0;
        for (const QString& path : {school.alg, school.vak, school.lurits}) {
            QFile f(path);
            f.open(QIODevice::ReadOnly);
            total += f.readAll().size();
        }
        benchmark::DoNotOptimize(total);
    }
}
BENCHMARK(BM_ReadThreeFiles)->Arg(500)->Arg(5000)->Unit(benchmark::kMillisecond);

}  // namespace
