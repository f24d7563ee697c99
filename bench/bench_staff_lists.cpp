// The staff list of 1,000 staff members, from the record files to a PDF file and to a
// workbook, beside its floors measured in the same run: reading the master file's bytes once,
// and building the grid alone (records read, LURITS and CEMIS numbers looked up).

#include <benchmark/benchmark.h>

#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTextStream>
#include <memory>

#include "platform/drive_map.h"
#include "reports/painter_device.h"
#include "reports/recording_device.h"
#include "reports/school_report.h"
#include "reports/staff_lists.h"
#include "shell/demo_tree.h"
#include "shell/school.h"
#include "shell/session.h"
#include "store/record_layouts.h"
#include "ui/scripted_dialogs.h"

using namespace korvel;
using namespace korvel::reports;

namespace {

constexpr int kStaff = 1000;
constexpr int kYear = 2026;

// The demo tree, its active staff copied under new post numbers (with their additional and
// LURITS records) until kStaff members are active.
struct Tree {
    QTemporaryDir dir;
    ui::ScriptedDialogs dialogs;
    std::unique_ptr<shell::Session> session;

    Tree() {
        ui::UnattendedDialogs demo_answers;
        shell::write_demo_tree(dir.path(), kYear, demo_answers);
        session = shell::Session::on_drive(
            dialogs, platform::DriveMap::explicit_map({{QStringLiteral("C:"), dir.path()}}),
            QStringLiteral("C:"), QString::number(kYear));
        shell::load_school_record(*session);
        using store::Code;
        session->open_file(Code::PRSALG, session->folders.staff);
        session->open_file(Code::PRSADD, session->folders.staff);
        session->open_file(Code::PRSLURITS, session->folders.staff);
        std::vector<store::Record> masters;
        session->scan_records(Code::PRSALG, [&](int, store::Record& r) {
            if (r.text(store::PRSALG["PA_AKTIEF"]).trimmed().isEmpty())
                masters.push_back(r);
        });
        for (int n = int(masters.size()), i = 0; n < kStaff; ++n, ++i) {
            store::Record r = masters[size_t(i) % masters.size()];
            const QString post = QString::number(2000 + i);
            const QString id =
                r.text(store::PRSALG["PA_ID_NR"]).left(6) + QString::number(1000000 + i).right(7);
            r.set_text(store::PRSALG["PA_POS_NR"], post);
            r.set_text(store::PRSALG["PA_ID_NR"], id);
            r.set_text(store::PRSALG["PA_VAN"],
                       r.text(store::PRSALG["PA_VAN"]) + QStringLiteral(" %1").arg(i));
            session->working(Code::PRSALG) = r;
            session->append_record(Code::PRSALG);

            store::Record& add = session->working(Code::PRSADD);
            add.clear();
            add.set_text(store::PRSADD["PD_POS_NR"], post);
            add.set_text(store::PRSADD["PD_CEMIS"],
                         QStringLiteral("9%1").arg(i, 15, 10, QChar(u'0')));
            session->append_record(Code::PRSADD);

            store::Record& lurits = session->working(Code::PRSLURITS);
            lurits.clear();
            lurits.set_text(store::PRSLURITS["LU_ID_NR"], id);
            lurits.set_text(store::PRSLURITS["LU_NR"], QString::number(300000000 + i));
            session->append_record(Code::PRSLURITS);
        }
        for (Code c : {Code::PRSALG, Code::PRSADD, Code::PRSLURITS})
            session->close_file(c);
        session->afrikaans = true;
    }
};

Tree& tree() {
    static Tree t;
    return t;
}

void BM_ReadMasterFloor(benchmark::State& state) {
    Tree& t = tree();
    const QString path =
        t.session->fs().native(t.session->folders.staff) + QStringLiteral("/prs_alg_random.txt");
    for (auto _ : state) {
        QFile f(path);
        f.open(QIODevice::ReadOnly);
        benchmark::DoNotOptimize(f.readAll());
    }
    state.SetItemsProcessed(state.iterations() * kStaff);
}
BENCHMARK(BM_ReadMasterFloor)->Unit(benchmark::kMillisecond);

void BM_StaffListGrid(benchmark::State& state) {
    Tree& t = tree();
    for (auto _ : state) {
        RecordingDevice device;
        PrintJob job(device, t.dialogs, report_school(*t.session), true);
        StaffLists form(*t.session, job, kStaffListOption);
        form.form_load();
        PrintGrid grid = form.staff_list_grid();
        benchmark::DoNotOptimize(grid.rows());
        if (grid.rows() != kStaff + 1)
            state.SkipWithError("not every staff member is in the list");
    }
    state.SetItemsProcessed(state.iterations() * kStaff);
}
BENCHMARK(BM_StaffListGrid)->Unit(benchmark::kMillisecond);

void BM_StaffListToPdf(benchmark::State& state) {
    Tree& t = tree();
    QTemporaryDir out;
    for (auto _ : state) {
        PdfDevice pdf(out.filePath(QStringLiteral("personeellys.pdf")));
        PrintJob job(pdf, t.dialogs, report_school(*t.session), true);
        StaffLists form(*t.session, job, kStaffListOption);
        form.form_load();
        form.choose_target = [](PrintJob& j) {
            j.print_setup();
            j.state.page_pending = true;
            return true;
        };
        form.print_staff_list();
    }
    state.counters["out_kB"] =
        double(QFileInfo(out.filePath(QStringLiteral("personeellys.pdf"))).size()) / 1024.0;
    state.SetItemsProcessed(state.iterations() * kStaff);
}
BENCHMARK(BM_StaffListToPdf)->Unit(benchmark::kMillisecond);

void BM_StaffListToWorkbook(benchmark::State& state) {
    Tree& t = tree();
    QTemporaryDir out;
    for (auto _ : state) {
        RecordingDevice device;
        PrintJob job(device, t.dialogs, report_school(*t.session), true);
        StaffLists form(*t.session, job, kStaffListOption);
        form.form_load();
        form.choose_target = [&](PrintJob& j) {
            j.begin_spreadsheet(out.path(), QStringLiteral("personeellys"));
            return true;
        };
        form.print_staff_list();
    }
    state.counters["out_kB"] =
        double(QFileInfo(out.filePath(QStringLiteral("personeellys.xlsx"))).size()) / 1024.0;
    state.SetItemsProcessed(state.iterations() * kStaff);
}
BENCHMARK(BM_StaffListToWorkbook)->Unit(benchmark::kMillisecond);

// The yardstick: LibreOffice Calc converting a CSV of the same table to PDF and to a workbook,
// each run a cold start as a user would see it. Skipped where soffice is not installed; an
// error when the converted file is missing or empty, so a conversion that did nothing (Writer
// alone cannot read CSV) is never taken for a fast one.
void libreoffice_convert(benchmark::State& state, const char* to) {
    const QString soffice = QStandardPaths::findExecutable(QStringLiteral("soffice"));
    if (soffice.isEmpty()) {
        state.SkipWithError("soffice is not installed (make bench installs it)");
        return;
    }
    Tree& t = tree();
    QTemporaryDir out;
    const QString csv_path = out.filePath(QStringLiteral("personeellys.csv"));
    {
        RecordingDevice device;
        PrintJob job(device, t.dialogs, report_school(*t.session), true);
        StaffLists form(*t.session, job, kStaffListOption);
        form.form_load();
        const PrintGrid grid = form.staff_list_grid();
        QFile csv(csv_path);
        csv.open(QIODevice::WriteOnly);
        QTextStream stream(&csv);
        for (int r = 0; r < grid.rows(); ++r) {
            QStringList cells;
            for (int c = 0; c < grid.cols(); ++c) {
                cells << u'"' + grid.text(r, c).replace(u'"', QStringLiteral("\"\"")) + u'"';
            }
            stream << cells.join(u',') << "\n";
        }
    }
    const QString target = out.filePath(QStringLiteral("personeellys.") + QLatin1String(to));
    // Comma-separated, quoted with '"', UTF-8, from the first line.
    const QStringList arguments{
        QStringLiteral("-env:UserInstallation=file://") + out.filePath(QStringLiteral("profile")),
        QStringLiteral("--headless"),
        QStringLiteral("--norestore"),
        QStringLiteral("--infilter=CSV:44,34,76,1"),
        QStringLiteral("--convert-to"),
        QLatin1String(to),
        QStringLiteral("--outdir"),
        out.path(),
        csv_path};
    // Returns an empty text when the converted file is there and not empty.
    auto convert = [&]() -> QString {
        QFile::remove(target);
        QProcess office;
        office.setProcessChannelMode(QProcess::MergedChannels);
        office.start(soffice, arguments);
        if (!office.waitForFinished(10 * 60 * 1000)) {
            office.kill();
            office.waitForFinished();
            return QStringLiteral("soffice did not finish");
        }
        const QFileInfo made(target);
        if (!made.isFile() || made.size() == 0)
            return QStringLiteral("soffice made no ") + QLatin1String(to) + QStringLiteral(": ") +
                   QString::fromLocal8Bit(office.readAll()).simplified();
        return {};
    };
    // The first start builds the user profile; a user pays that once, so it is left out.
    if (const QString why = convert(); !why.isEmpty()) {
        state.SkipWithError(why.toStdString().c_str());
        return;
    }
    qint64 bytes = 0;
    for (auto _ : state) {
        if (const QString why = convert(); !why.isEmpty()) {
            state.SkipWithError(why.toStdString().c_str());
            break;
        }
        bytes = QFileInfo(target).size();
    }
    state.counters["out_kB"] = double(bytes) / 1024.0;
    state.SetItemsProcessed(state.iterations() * kStaff);
}
void BM_LibreOfficeCsvToPdf(benchmark::State& state) {
    libreoffice_convert(state, "pdf");
}
void BM_LibreOfficeCsvToXlsx(benchmark::State& state) {
    libreoffice_convert(state, "xlsx");
}
// The work is done in another process: only the time on the clock counts.
BENCHMARK(BM_LibreOfficeCsvToPdf)->Unit(benchmark::kMillisecond)->Iterations(2)->UseRealTime();
BENCHMARK(BM_LibreOfficeCsvToXlsx)->Unit(benchmark::kMillisecond)->Iterations(2)->UseRealTime();

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
