// The tuition and qualification grids of 1,000 staff members with 1,000 subject and 1,000
// additional records, beside their floor measured in the same run: reading the three files'
// bytes once. A grid over 0.2 seconds reports an error; its ratio to the floor is a counter.

#include <benchmark/benchmark.h>

#include <QFile>
#include <QTemporaryDir>
#include <memory>

#include "against_floor.h"
#include "platform/drive_map.h"
#include "reports/qualification_list.h"
#include "reports/recording_device.h"
#include "reports/tuition_list.h"
#include "shell/session.h"
#include "store/record_layouts.h"
#include "ui/scripted_dialogs.h"

using namespace korvel;
using namespace korvel::reports;
using store::Code;

namespace {

constexpr int kStaff = 1000;
constexpr double kMostSeconds = 0.2;

struct Tree {
    QTemporaryDir dir;
    ui::ScriptedDialogs dialogs;
    std::unique_ptr<shell::Session> session;
    Tree() {
        session = shell::Session::on_drive(
            dialogs, platform::DriveMap::explicit_map({{QStringLiteral("C:"), dir.path()}}),
            QStringLiteral("C:"), QStringLiteral("2026"));
        for (Code c : {Code::PRSALG, Code::PRSADD, Code::PRSVAK})
            session->open_file(c);
        for (int i = 0; i < kStaff; ++i) {
            const QString post = QString::number(100 + i);
            store::Record& r = session->working(Code::PRSALG);
            r.clear();
            r.set_text(store::PRSALG["PA_POS_NR"], post);
            r.set_text(store::PRSALG["PA_VAN"], QStringLiteral("VAN WYK %1").arg(i));
            r.set_text(store::PRSALG["PA_NAME"], QStringLiteral("ANNA MARIA"));
            for (int q = 1; q <= 4; ++q) {
                r.set_text(
                    store::PRSALG["PK_GRDE"],
                    q == 4 ? QStringLiteral("BA (OUD)") : QStringLiteral("PAD").mid(q - 1, 1), q);
                r.set_text(store::PRSALG["PK_WAAR"], QStringLiteral("UNISA"), q);
                r.set_int16(store::PRSALG["PK_JAAR"], 1990 + q, q);
            }
            session->append_record(Code::PRSALG);
            store::Record& add = session->working(Code::PRSADD);
            add.clear();
            add.set_text(store::PRSADD["PD_POS_NR"], post);
            add.set_int16(store::PRSADD["PD_KW_PROF"], 1 + i % 16, 1);
            add.set_int16(store::PRSADD["PD_KW_AKAD"], 1 + i % 5, 2);
            add.set_int16(store::PRSADD["PD_KW_DETAIL"], 1 + i % 27, 3);
            session->append_record(Code::PRSADD);
            store::Record& v = session->working(Code::PRSVAK);
            v.clear();
            v.set_text(store::PRSVAK["PV_POS_NR"], post);
            for (int s = 1; s <= 10; ++s) {
                v.set_text(store::PRSVAK["PV_VAK2"], QStringLiteral("VAK%1").arg((i + s / 2) % 30),
                           s);
                v.set_text(store::PRSVAK["PV_GRD2"], QString::number(8 + s % 5), s);
            }
            session->append_record(Code::PRSVAK);
        }
        for (Code c : {Code::PRSALG, Code::PRSADD, Code::PRSVAK})
            session->close_file(c);
    }
};

Tree& tree() {
    static Tree t;
    return t;
}

// Reading the master, additional and subject files' bytes once.
void read_floor() {
    const QString folder = tree().session->fs().native(tree().session->folders.staff);
    for (const char* name : {"/prs_alg_random.txt", "/prs_add_random.txt", "/prs_vak_random.txt"}) {
        QFile f(folder + QString::fromLatin1(name));
        f.open(QIODevice::ReadOnly);
        benchmark::DoNotOptimize(f.readAll());
    }
}

void BM_ReadFilesFloor(benchmark::State& state) {
    tree();
    for (auto _ : state)
        read_floor();
    state.SetItemsProcessed(state.iterations() * kStaff);
}
BENCHMARK(BM_ReadFilesFloor)->Unit(benchmark::kMillisecond);

// The grid of a form, from the form's load to its close, against the goals.
template <class Form, class Build>
void grid_against_floor(benchmark::State& state, Build build) {
    Tree& t = tree();
    bench::against_floor(
        state, read_floor,
        [&] {
            RecordingDevice device;
            PrintJob job(device, t.dialogs);
            Form form(*t.session, job);
            form.form_load();
            const PrintGrid grid = build(form);
            benchmark::DoNotOptimize(grid.rows());
            form.exit_click();
            if (grid.rows() < kStaff + 1)
                state.SkipWithError("not every staff member is in the grid");
        },
        kMostSeconds);
    state.SetItemsProcessed(state.iterations() * kStaff);
}

void BM_TuitionGrid(benchmark::State& state) {
    grid_against_floor<TuitionList>(state, [](TuitionList& f) { return f.tuition_grid(); });
}
BENCHMARK(BM_TuitionGrid)->Unit(benchmark::kMillisecond);

void BM_QualificationGrid(benchmark::State& state) {
    grid_against_floor<StaffQualificationList>(
        state, [](StaffQualificationList& f) { return f.qualification_grid(); });
}
BENCHMARK(BM_QualificationGrid)->Unit(benchmark::kMillisecond);

}  // namespace
