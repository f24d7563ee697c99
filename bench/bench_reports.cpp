// A staff list of 1,000 rows through the report engine: to a PDF file and to a workbook, each
// beside its floor measured in the same run: the same texts drawn straight onto a QPdfWriter at
// fixed places, and the same cells written straight through libxlsxwriter with one format.
// The layout alone (the recording device) shows what the engine itself costs.

#include <benchmark/benchmark.h>
#include <xlsxwriter.h>

#include <QDir>
#include <QFont>
#include <QGuiApplication>
#include <QPainter>
#include <QPdfWriter>
#include <QTemporaryDir>

#include "reports/grid_output.h"
#include "reports/painter_device.h"
#include "reports/recording_device.h"
#include "reports/report_engine.h"
#include "ui/scripted_dialogs.h"

using namespace korvel::reports;

namespace {

constexpr int kRows = 1000;

PrintGrid staff_grid() {
    PrintGrid grid;
    grid.set_format_string(QStringLiteral(
        "<POSNR|<VAN|<VOORNAME|^ID-NOMMER|^AANSTELLING|<TELEFOON|<KWALIFIKASIE|>SALARIS"));
    for (int r = 1; r <= kRows; ++r) {
        grid.add_item(QStringLiteral("%1\tVAN DER MERWE %2\tJOHANNES PETRUS\t8001015009087\t"
                                     "2019.01.15\t021 555 %3\tBED (HONS)\t%4.00")
                          .arg(r, 5, 10, QChar(u'0'))
                          .arg(r)
                          .arg(r % 10000, 4, 10, QChar(u'0'))
                          .arg(20000 + r));
    }
    return grid;
}

ReportSchool school() {
    ReportSchool s;
    s.name = QStringLiteral("HOëRSKOOL DUINEVELD");
    s.version = QStringLiteral("4.2.17");
    s.operating_system = QStringLiteral("Debian GNU/Linux 12");
    return s;
}

int run_report(PrintJob& job, PrintGrid grid) {
    int pages = 0;
    for (;;) {
        job.state.page_pending = true;
        job.print_page_header(QStringLiteral("PERSONEELLYS"));
        ++pages;
        if (print_grid_pages(job, grid))
            break;
        job.print_continuation_mark();
    }
    job.finish_report();
    return pages;
}

void BM_LayoutOnly(benchmark::State& state) {
    const PrintGrid grid = staff_grid();
    for (auto _ : state) {
        RecordingDevice device;
        korvel::ui::ScriptedDialogs dialogs;
        PrintJob job(device, dialogs, school());
        job.print_setup();
        benchmark::DoNotOptimize(run_report(job, grid));
    }
    state.SetItemsProcessed(state.iterations() * kRows);
}
BENCHMARK(BM_LayoutOnly)->Unit(benchmark::kMillisecond);

void BM_GridToPdf(benchmark::State& state) {
    const PrintGrid grid = staff_grid();
    QTemporaryDir dir;
    int pages = 0;
    for (auto _ : state) {
        PdfDevice device(dir.filePath("lys.pdf"));
        korvel::ui::ScriptedDialogs dialogs;
        PrintJob job(device, dialogs, school());
        job.print_setup();
        pages = run_report(job, grid);
    }
    state.counters["pages"] = pages;
    state.SetItemsProcessed(state.iterations() * kRows);
}
BENCHMARK(BM_GridToPdf)->Unit(benchmark::kMillisecond);

// The floor: every text of the grid drawn once at a fixed place, one font, the same pages.
void BM_PdfFloor(benchmark::State& state) {
    const PrintGrid grid = staff_grid();
    QTemporaryDir dir;
    for (auto _ : state) {
        QPdfWriter writer(dir.filePath("floor.pdf"));
        writer.setResolution(1440);
        writer.setPageSize(QPageSize(QPageSize::A4));
        QPainter p(&writer);
        QFont font(QStringLiteral("Liberation Mono"));
        font.setPixelSize(160);
        p.setFont(font);
        double y = 1440;
        for (int r = 0; r < grid.rows(); ++r) {
            for (int c = 0; c < grid.cols(); ++c)
                p.drawText(QPointF(c * 1400.0, y), grid.text(r, c));
            y += 285;
            if (y > 14500) {
                writer.newPage();
                y = 1440;
            }
        }
        p.end();
    }
    state.SetItemsProcessed(state.iterations() * kRows);
}
BENCHMARK(BM_PdfFloor)->Unit(benchmark::kMillisecond);

void BM_GridToXlsx(benchmark::State& state) {
    const PrintGrid grid = staff_grid();
    QTemporaryDir dir;
    for (auto _ : state) {
        RecordingDevice device;
        korvel::ui::ScriptedDialogs dialogs;
        PrintJob job(device, dialogs, school());
        job.begin_spreadsheet(dir.path(), QStringLiteral("lys"));
        PrintGrid copy = grid;
        job.print_page_header(QStringLiteral("PERSONEELLYS"));
        print_grid_pages(job, copy);
        job.finish_report();
    }
    state.SetItemsProcessed(state.iterations() * kRows);
}
BENCHMARK(BM_GridToXlsx)->Unit(benchmark::kMillisecond);

// The floor: the same cells straight through libxlsxwriter with one format.
void BM_XlsxFloor(benchmark::State& state) {
    const PrintGrid grid = staff_grid();
    QTemporaryDir dir;
    const QByteArray path = QFile::encodeName(dir.filePath("floor.xlsx"));
    for (auto _ : state) {
        lxw_workbook* book = workbook_new(path.constData());
        lxw_worksheet* ws = workbook_add_worksheet(book, nullptr);
        lxw_format* f = workbook_add_format(book);
        format_set_font_name(f, "Arial");
        for (int r = 0; r < grid.rows(); ++r)
            for (int c = 0; c < grid.cols(); ++c)
                worksheet_write_string(ws, lxw_row_t(r + 5), lxw_col_t(c),
                                       grid.text(r, c).toUtf8().constData(), f);
        workbook_close(book);
    }
    state.SetItemsProcessed(state.iterations() * kRows);
}
BENCHMARK(BM_XlsxFloor)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
