// The year-end at the staff file's largest, 32,767 records (134 MB) with companions: the
// OVERWRITE closing against copying the year folder once; the conversion of a 1085-byte
// attendance file against copying it; the export of 5,000 staff with every field.

#include <benchmark/benchmark.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <vector>

#include "shell/folders.h"
#include "shell/session.h"
#include "store/upgrades.h"
#include "ui/scripted_dialogs.h"
#include "yearend/staff_export.h"
#include "yearend/year_end.h"

using namespace korvel;
using store::PRSALG;

namespace {

// A file of n records of one layout, written in blocks.
void write_records(const QString& path, const store::Layout& layout, int n) {
    QFile f(path);
    f.open(QIODevice::WriteOnly);
    store::Record r(layout);
    std::vector<char> block;
    for (int i = 1; i <= n; ++i) {
        r.clear();
        r.set_text(layout.fields[0], QString::number(i));
        if (&layout == &PRSALG) {
            r.set_text(PRSALG["PA_VAN"], QStringLiteral("VAN DER MERWE %1").arg(i));
            r.set_text(PRSALG["PA_ID_NR"], QStringLiteral("8001015009087"));
            r.set_int16(PRSALG["PO_JRE_SKL"], 10);
            r.set_text(PRSALG["PO_VAK"], QStringLiteral("12 WISK"), 1);
        }
        block.insert(block.end(), r.data(), r.data() + r.size());
        if (block.size() >= size_t(1000 * layout.record_length) || i == n) {
            f.write(block.data(), qint64(block.size()));
            block.clear();
        }
    }
}

struct YearTree {
    explicit YearTree(int staff)
        : session(dialogs, platform::DriveMap::explicit_map({{"C:", dir.path()}})) {
        session.folders = shell::default_folders("C:", "2026");
        session.ledger_year = "2026";
        from = dir.path() + "/VESPARINE/STAFF/P2026";
        QDir().mkpath(from);
        write_records(from + "/prs_alg_random.txt", PRSALG, staff);
        write_records(from + "/prs_add_random.txt", store::PRSADD, staff);
        write_records(from + "/prs_nme_random.txt", store::PRSNME, staff);
        write_records(from + "/prs_afw_random.txt", store::PRSAFW, staff);
    }
    QTemporaryDir dir;
    ui::UnattendedDialogs dialogs;
    shell::Session session;
    QString from;
};

// Copies every file of a folder into another: the floor of the closing.
void copy_folder(const QString& from, const QString& to) {
    QDir().mkpath(to);
    for (const QString& name : QDir(from).entryList(QDir::Files)) {
        QFile::remove(to + "/" + name);
        QFile::copy(from + "/" + name, to + "/" + name);
    }
}

void BM_CopyYearFolder(benchmark::State& state) {
    static YearTree t(store::kMaxRecords);
    for (auto _ : state) {
        copy_folder(t.from, t.dir.path() + "/copy");
    }
}
BENCHMARK(BM_CopyYearFolder)->Unit(benchmark::kMillisecond)->Iterations(3);

void BM_YearEndOverwrite(benchmark::State& state) {
    static YearTree t(store::kMaxRecords);
    for (auto _ : state) {
        yearend::YearEnd form(t.session);
        form.form_load();
        form.evj_ok_click();
        if (form.byvoeg_oorskryf_visible) {
            form.bo_opsie = 0;
            form.bo_ok_click();
        }
        if (!form.completed) {
            state.SkipWithError("the closing did not complete");
        }
    }
}
BENCHMARK(BM_YearEndOverwrite)->Unit(benchmark::kMillisecond)->Iterations(3);

void BM_CopyAttendanceFile(benchmark::State& state) {
    static YearTree t(0);
    const QString old = t.from + "/old.txt";
    write_records(old, store::PRSAFW, store::kMaxRecords);  // the length of the 1118 file
    for (auto _ : state) {
        QFile::remove(t.from + "/copy.txt");
        QFile::copy(old, t.from + "/copy.txt");
    }
}
BENCHMARK(BM_CopyAttendanceFile)->Unit(benchmark::kMillisecond)->Iterations(3);

void BM_UpgradeAttendance2015(benchmark::State& state) {
    static YearTree t(0);
    for (auto _ : state) {
        state.PauseTiming();
        QFile::remove(t.from + "/prs_afw_2014_random.txt");
        QFile f(t.from + "/prs_afw_random.txt");
        f.open(QIODevice::WriteOnly);
        const QByteArray record = QByteArray("00001") + QByteArray(360, 'a') + QByteArray(720, '.');
        for (int i = 0; i < store::kMaxRecords; ++i) {
            f.write(record);
        }
        f.close();
        state.ResumeTiming();
        store::upgrade_on_open(t.session.fs(), "PRSAFW", "C:\\VESPARINE\\STAFF\\P2026", "2015");
    }
}
BENCHMARK(BM_UpgradeAttendance2015)->Unit(benchmark::kMillisecond)->Iterations(3);

void BM_Export5000EveryField(benchmark::State& state) {
    static YearTree t(5000);
    for (auto _ : state) {
        yearend::StaffExport form(t.session);
        form.load();
        form.uitvoer_velde_selected.assign(yearend::kExportFieldCount, true);
        QString error;
        if (!form.write_workbook(t.dir.path() + "/staff.xlsx", &error)) {
            state.SkipWithError("the workbook was not written");
        }
    }
}
BENCHMARK(BM_Export5000EveryField)->Unit(benchmark::kMillisecond)->Iterations(3);

}  // namespace
