// The data check over a year of 5,000 staff with every companion file. The floor is reading
// every file of the year once, in the same run: the check must stay within three times that
// (the counter "x_floor"), and its memory must not grow with the files (it reads in blocks; the
// counter "rss_mb" is the process's peak).

#include <benchmark/benchmark.h>

#include <sys/resource.h>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <vector>

#include "check/data_check.h"
#include "shell/folders.h"
#include "store/record.h"
#include "store/record_layouts.h"

using namespace korvel;
using namespace korvel::store;

namespace {

void write_records(const QString& path, const Layout& layout, int n,
                   const std::function<void(int, Record&)>& fill) {
    QFile f(path);
    f.open(QIODevice::WriteOnly | QIODevice::Truncate);
    Record r(layout);
    for (int i = 1; i <= n; ++i) {
        r.clear();
        fill(i, r);
        f.write(r.data(), r.size());
    }
}

struct Year {
    explicit Year(int staff) {
        tree.drives = platform::DriveMap::explicit_map({{QStringLiteral("C:"), dir.path()}});
        tree.folders = shell::default_folders(QStringLiteral("C:"), QStringLiteral("2026"));
        tree.year = QStringLiteral("2026");
        tree.today = QDate(2026, 3, 2);
        const QString folder = dir.path() + "/VESPARINE/STAFF/P2026";
        const QString general = dir.path() + "/VESPARINE/GENERAL/G2026";
        QDir().mkpath(folder);
        QDir().mkpath(general);
        const auto post = [](int i) { return QString::number(i); };
        const auto keyed = [&](const Layout& l, std::string_view key) {
            const QString path =
                folder + u'/' + QLatin1String(l.file_name.data(), l.file_name.size());
            write_records(path, l, staff,
                          [&](int i, Record& r) { r.set_text(*l.find(key), post(i)); });
            files << path;
        };
        const QString alg = folder + "/prs_alg_random.txt";
        write_records(alg, PRSALG, staff, [&](int i, Record& r) {
            r.set_text(PRSALG["PA_POS_NR"], post(i));
            r.set_text(PRSALG["PA_VAN"], QStringLiteral("VAN DER MERWE %1").arg(i));
            r.set_text(PRSALG["PA_NAME"], QStringLiteral("JOHANNES PETRUS"));
            r.set_date(PRSALG["PA_G_DATUM"], QDate(1970, 1, 1).addDays(i));
        });
        files << alg;
        keyed(PRSADD, "PD_POS_NR");
        keyed(PRSNME, "PN_POS_NR");
        keyed(PRSVAK, "PV_POS_NR");
        keyed(PRSAFW, "PF_POS_NR");
        const QString lne = folder + "/prs_lne_random.txt";
        write_records(lne, PRSLNE, staff, [&](int i, Record& r) {
            r.set_text(PRSLNE["PL_POS_NR"], post(i));
            r.set_int16(PRSLNE["PL_MAAND"], 1 + i % 12);
        });
        files << lne;
        write_records(general + "/skl_dta_random.txt", SKL, 1,
                      [](int, Record& r) { r.set_text(SKL["SD_SKOOL"], QStringLiteral("SKOOL")); });
        files << general + "/skl_dta_random.txt";
    }

    qint64 read_all_once() const {
        qint64 total = 0;
        for (const QString& path : files) {
            QFile f(path);
            f.open(QIODevice::ReadOnly);
            char block[1 << 16];
            for (qint64 n; (n = f.read(block, sizeof block)) > 0;) {
                total += n;
            }
        }
        return total;
    }

    QTemporaryDir dir;
    check::CheckTree tree;
    QStringList files;
};

double peak_rss_mb() {
    rusage u{};
    getrusage(RUSAGE_SELF, &u);
    return double(u.ru_maxrss) / 1024.0;
}

void BM_CheckYear(benchmark::State& state) {
    Year year(int(state.range(0)));
    qint64 check_ns = 0, floor_ns = 0;
    std::size_t findings = 0;
    for (auto _ : state) {
        QElapsedTimer t;
        t.start();
        findings = check::check_tree(year.tree).size();
        check_ns += t.nsecsElapsed();
        state.PauseTiming();
        t.restart();
        benchmark::DoNotOptimize(year.read_all_once());
        floor_ns += t.nsecsElapsed();
        state.ResumeTiming();
    }
    state.counters["findings"] = double(findings);
    state.counters["x_floor"] = double(check_ns) / double(std::max<qint64>(floor_ns, 1));
    state.counters["rss_mb"] = peak_rss_mb();
}
BENCHMARK(BM_CheckYear)->Arg(500)->Arg(5000)->Unit(benchmark::kMillisecond);

// The floor alone: every file of the year read once.
void BM_ReadYearOnce(benchmark::State& state) {
    Year year(int(state.range(0)));
    for (auto _ : state) {
        benchmark::DoNotOptimize(year.read_all_once());
    }
}
BENCHMARK(BM_ReadYearOnce)->Arg(500)->Arg(5000)->Unit(benchmark::kMillisecond);

}  // namespace
