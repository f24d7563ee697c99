// The staff master file at its largest, 32,767 records (134 MB): building the index against
// reading the file's bytes once, compaction against copying the file, and the memory of a full
// scan. Each goal is a ratio to its floor measured in the same run.

#include <benchmark/benchmark.h>
#include <sys/resource.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <vector>

#include "store/store.h"
#include "ui/scripted_dialogs.h"

using namespace korvel::store;

namespace {

constexpr int kRecords = kMaxRecords;

// A temporary staff folder holding a master file of unique, active, named records, written
// in blocks so that making it does not itself hold the file in memory.
struct BigTree {
    BigTree() {
        const QString staff = dir.path() + "/VESPARINE/STAFF/P2026";
        QDir().mkpath(staff);
        alg_path = staff + "/prs_alg_random.txt";
        QFile f(alg_path);
        f.open(QIODevice::WriteOnly);
        Record r(PRSALG);
        std::vector<char> block;
        block.reserve(1000 * 4103);
        for (int n = 1; n <= kRecords; ++n) {
            r.clear();
            r.set_text(PRSALG["PA_POS_NR"], QString::number(n));
            r.set_text(PRSALG["PA_VAN"], QStringLiteral("VAN DER MERWE %1").arg(n));
            r.set_text(PRSALG["PA_NAME"], QStringLiteral("JOHANNES PETRUS"));
            r.set_text(PRSALG["PA_TITEL"], QStringLiteral("MNR"));
            r.set_text(PRSALG["PA_ID_NR"], QStringLiteral("8001015009087"));
            block.insert(block.end(), r.data(), r.data() + r.size());
            if (block.size() >= 1000 * 4103 || n == kRecords) {
                f.write(block.data(), static_cast<qint64>(block.size()));
                block.clear();
            }
        }
    }
    QTemporaryDir dir;
    QString alg_path;
};

BigTree& tree() {
    static BigTree t;
    return t;
}

struct TreeStore {
    TreeStore()
        : store(dialogs, korvel::platform::DriveMap::explicit_map({{"C:", tree().dir.path()}})) {
        store.folders.staff = "C:\\VESPARINE\\STAFF\\P2026";
        store.open_file(Code::PRSALG);
    }
    korvel::ui::ScriptedDialogs dialogs;
    Store store;
};

long peak_rss_kb() {
    rusage u{};
    getrusage(RUSAGE_SELF, &u);
    return u.ru_maxrss;
}

void BM_ReadFileOnce(benchmark::State& state) {
    std::vector<char> buffer(1 << 20);
    for (auto _ : state) {
        QFile f(tree().alg_path);
        f.open(QIODevice::ReadOnly | QIODevice::Unbuffered);
        qint64 total = 0;
        for (qint64 got; (got = f.read(buffer.data(), static_cast<qint64>(buffer.size()))) > 0;) {
            total += got;
        }
        benchmark::DoNotOptimize(total);
    }
    state.SetBytesProcessed(state.iterations() * QFile(tree().alg_path).size());
}

void BM_BuildStaffIndex(benchmark::State& state) {
    TreeStore t;
    const long rss_before = peak_rss_kb();
    for (auto _ : state) {
        t.store.build_staff_index();
        benchmark::DoNotOptimize(t.store.staff_index.size());
    }
    state.SetBytesProcessed(state.iterations() * QFile(tree().alg_path).size());
    state.counters["records"] = static_cast<double>(t.store.staff_index.size());
    // A scan streams in blocks: the peak memory grows by the index, never by the file.
    state.counters["peak_rss_growth_MB"] = static_cast<double>(peak_rss_kb() - rss_before) / 1024.0;
}

void BM_CopyFile(benchmark::State& state) {
    const QString copy = tree().dir.path() + "/copy.txt";
    for (auto _ : state) {
        QFile::remove(copy);
        QFile::copy(tree().alg_path, copy);
        QFile out(copy);
        out.open(QIODevice::ReadWrite);
        out.flush();
    }
    QFile::remove(copy);
}

void BM_CompactStaffFiles(benchmark::State& state) {
    TreeStore t;
    for (auto _ : state) {
        t.store.compact_staff_files();
    }
    state.counters["records"] = static_cast<double>(t.store.count(Code::PRSALG));
}

}  // namespace

BENCHMARK(BM_ReadFileOnce)->Unit(benchmark::kMillisecond)->MinTime(1.0);
BENCHMARK(BM_BuildStaffIndex)->Unit(benchmark::kMillisecond)->MinTime(1.0);
BENCHMARK(BM_CopyFile)->Unit(benchmark::kMillisecond)->MinTime(1.0);
BENCHMARK(BM_CompactStaffFiles)->Unit(benchmark::kMillisecond)->MinTime(1.0);
