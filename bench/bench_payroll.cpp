// Pay slips and the salary summary of 1,000 staff from a 12,000-record prs_lne_random.txt,
// beside the floor measured in the same run: reading the file's bytes once. Gathering the
// months is one pass over the file, not a scan per person; the slips go to a PDF file.

#include <benchmark/benchmark.h>

#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QTemporaryDir>
#include <chrono>
#include <memory>
#include <string>

#include "payroll/pay_slips.h"
#include "platform/drive_map.h"
#include "reports/painter_device.h"
#include "reports/recording_device.h"
#include "reports/school_report.h"
#include "shell/demo_tree.h"
#include "shell/school.h"
#include "shell/session.h"
#include "store/record_layouts.h"
#include "ui/scripted_dialogs.h"

using namespace korvel;
using namespace korvel::reports;
using store::Code;

namespace {

constexpr int kStaff = 1000;
constexpr int kYear = 2026;

// The demo tree with 1,000 staff on the governing body's pay, each with twelve months.
struct Tree {
    QTemporaryDir dir;
    ui::ScriptedDialogs dialogs;
    std::unique_ptr<shell::Session> session;
    QString pay_file;

    Tree() {
        ui::UnattendedDialogs demo_answers;
        shell::write_demo_tree(dir.path(), kYear, demo_answers);
        session = shell::Session::on_drive(
            dialogs, platform::DriveMap::explicit_map({{QStringLiteral("C:"), dir.path()}}),
            QStringLiteral("C:"), QString::number(kYear));
        shell::load_school_record(*session);
        session->open_file(Code::PRSALG, session->folders.staff);
        session->open_file(Code::PRSLNE, session->folders.staff);
        // Only the new staff are paid by the school: the demo's own go to the department.
        session->scan_records(Code::PRSALG, [&](int n, store::Record& r) {
            r.set_text(store::PRSALG["PA_OD_BL"], QStringLiteral("O"));
            session->write_record(Code::PRSALG, n);
        });
        store::Record pattern = session->working(Code::PRSALG);
        for (int i = 0; i < kStaff; ++i) {
            store::Record r = pattern;
            r.set_text(store::PRSALG["PA_POS_NR"], QString::number(5000 + i));
            r.set_text(store::PRSALG["PA_AKTIEF"], QString());
            r.set_text(store::PRSALG["PA_OD_BL"], QStringLiteral("B"));
            session->working(Code::PRSALG) = r;
            session->append_record(Code::PRSALG);
        }
        // Months interleaved, as a year of capture writes them.
        for (int month = 1; month <= 12; ++month) {
            for (int i = 0; i < kStaff; ++i) {
                store::Record& p = session->working(Code::PRSLNE);
                p.clear();
                p.set_text(store::PRSLNE["PL_POS_NR"], QString::number(5000 + i));
                p.set_int16(store::PRSLNE["PL_MAAND"], month);
                p.set_int16(store::PRSLNE["PL_SALARIS"], 9000 + i);
                p.set_int16(store::PRSLNE["PL_TAX"], 900);
                p.set_text(store::PRSLNE["pl_i_teks"], QStringLiteral("VERVOER"), 1);
                p.set_int16(store::PRSLNE["PL_I_BDRG"], 350, 1);
                session->append_record(Code::PRSLNE);
            }
        }
        pay_file =
            session->fs().native(session->folders.staff) + QStringLiteral("/prs_lne_random.txt");
        session->afrikaans = false;
    }
};

Tree& tree() {
    static Tree t;
    return t;
}

bool to_paper(PrintJob& j) {
    j.print_setup();
    j.state.page_pending = true;
    return true;
}

void BM_ReadPayFileFloor(benchmark::State& state) {
    Tree& t = tree();
    for (auto _ : state) {
        QFile f(t.pay_file);
        f.open(QIODevice::ReadOnly);
        benchmark::DoNotOptimize(f.readAll());
    }
    state.SetItemsProcessed(state.iterations() * kStaff * 12);
}
BENCHMARK(BM_ReadPayFileFloor)->Unit(benchmark::kMillisecond);

// Gathering against the floor in the same run: an error when it takes more than twice as long.
void BM_GatherPayBook(benchmark::State& state) {
    Tree& t = tree();
    double floor_s = 1e9;
    for (int i = 0; i < 5; ++i) {
        const auto start = std::chrono::steady_clock::now();
        QFile f(t.pay_file);
        f.open(QIODevice::ReadOnly);
        benchmark::DoNotOptimize(f.readAll());
        floor_s = std::min(
            floor_s,
            std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
    }
    double best_s = 1e9;
    for (auto _ : state) {
        const auto start = std::chrono::steady_clock::now();
        const payroll::PayBook book = payroll::read_pay_book(*t.session);
        best_s = std::min(
            best_s,
            std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
        if (!book.find(QStringLiteral("5999"), 12))
            state.SkipWithError("a month is missing");
    }
    state.counters["x_floor"] = best_s / floor_s;
    if (best_s > 2 * floor_s) {
        static std::string why;
        why = "gathering takes " + std::to_string(best_s / floor_s) +
              " times reading the file, more than twice";
        state.SkipWithError(why.c_str());
    }
    state.SetItemsProcessed(state.iterations() * kStaff * 12);
}
BENCHMARK(BM_GatherPayBook)->Unit(benchmark::kMillisecond);

void BM_PaySlipsToPdf(benchmark::State& state) {
    Tree& t = tree();
    QTemporaryDir out;
    const QString path = out.filePath(QStringLiteral("slips.pdf"));
    for (auto _ : state) {
        PdfDevice pdf(path);
        PrintJob job(pdf, t.dialogs, report_school(*t.session), false);
        payroll::PaySlips form(*t.session, job, payroll::kPaySlipOption);
        form.form_load();
        form.maand_lys_dbl_click(5);
        form.choose_target = to_paper;
        form.print_pay_slips();
    }
    state.counters["out_kB"] = double(QFileInfo(path).size()) / 1024.0;
    state.SetItemsProcessed(state.iterations() * kStaff);
}
BENCHMARK(BM_PaySlipsToPdf)->Unit(benchmark::kMillisecond)->Iterations(1);

void BM_SalarySummaryToWorkbook(benchmark::State& state) {
    Tree& t = tree();
    QTemporaryDir out;
    for (auto _ : state) {
        RecordingDevice device;
        PrintJob job(device, t.dialogs, report_school(*t.session), false);
        payroll::PaySlips form(*t.session, job, payroll::kSummaryOption);
        form.form_load();
        form.maand_lys_dbl_click(11);
        form.to_month = true;
        form.choose_target = [&](PrintJob& j) {
            j.begin_spreadsheet(out.path(), QStringLiteral("opsomming"));
            return true;
        };
        form.print_salary_summary();
    }
    state.SetItemsProcessed(state.iterations() * kStaff);
}
BENCHMARK(BM_SalarySummaryToWorkbook)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    tree();  // built once, outside the timings
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
