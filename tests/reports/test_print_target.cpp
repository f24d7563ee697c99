// The print target: the kies_drukker behaviour driven as a user would, through a scripted host.

#include <QDir>
#include <QTemporaryDir>
#include <functional>

#include "reports/print_target.h"
#include "reports/report_fixture.h"
#include "store/quoted_text.h"

namespace korvel::reports {
namespace {

struct ScriptedHost : PrintTargetHost {
    std::function<void(PrintTarget&)> script;
    RecordingDevice* other_printer = nullptr;
    bool shown = false;
    void show_modal(PrintTarget& form) override {
        shown = true;
        if (script)
            script(form);
    }
    bool choose_printer(PrintJob& job) override {
        if (!other_printer)
            return false;
        job.set_device(*other_printer);
        return true;
    }
};

struct TargetFixture : testing::JobFixture {
    QTemporaryDir year_folder;
    QTemporaryDir workstation;
    ScriptedHost host;

    TargetFixture() { job.general_year_folder = year_folder.path(); }
    bool ask() { return ask_print_target(job, host, workstation.path()); }
    // The captions of the folder dialogs and input boxes shown.
    QStringList captions() const {
        QStringList out;
        for (const ui::Shown& s : dialogs.shown())
            if (s.kind == ui::Shown::Kind::Folder || s.kind == ui::Shown::Kind::Input)
                out << s.text;
        return out;
    }
};

TEST_F(TargetFixture, PrintInColourWritesTheFlagAndPendsAPage) {
    host.script = [](PrintTarget& form) {
        EXPECT_EQ(form.drukwerk_naam, QStringLiteral("2026 PERSONEELLYS"));
        EXPECT_EQ(form.drukker_naam, QStringLiteral("RECORDER"));
        // No colour file yet: black is selected.
        EXPECT_TRUE(form.kies_mono_red);
        form.kies_kleur_click();
        EXPECT_TRUE(form.kies_kleur_red);
        EXPECT_FALSE(form.kies_mono_red);
        form.druk_ok_click();
    };
    EXPECT_TRUE(ask());
    EXPECT_TRUE(job.state.page_pending);
    EXPECT_FALSE(job.state.to_spreadsheet);
    EXPECT_TRUE(read_colour_printing(year_folder.path()));
    EXPECT_TRUE(job.state.colour_printing);

    // The next time the form opens with colour selected.
    host.script = [](PrintTarget& form) {
        EXPECT_TRUE(form.kies_kleur_red);
        form.kies_mono_click();
        form.druk_ok_click();
    };
    EXPECT_TRUE(ask());
    EXPECT_FALSE(read_colour_printing(year_folder.path(), true));
}

TEST_F(TargetFixture, DeviceWithoutColourForcesBlack) {
    device.set_colour_mode(1);
    write_colour_printing(year_folder.path(), true);
    host.script = [](PrintTarget& form) {
        EXPECT_TRUE(form.kies_mono_red);
        form.kies_kleur_click();
        EXPECT_TRUE(form.kies_mono_red);
        form.druk_ok_click();
    };
    EXPECT_TRUE(ask());
    EXPECT_FALSE(job.state.colour_printing);
}

TEST_F(TargetFixture, CancelAndClosingTheWindowStopTheReport) {
    host.script = [](PrintTarget& form) { form.druk_stop_click(); };
    EXPECT_FALSE(ask());
    EXPECT_EQ(device.count(RecordedCall::Kind::Abandon), 1);
    EXPECT_EQ(device.count(RecordedCall::Kind::EndDoc), 0);  // nothing was open to end

    host.script = nullptr;  // the user closes the window
    EXPECT_FALSE(ask());
    EXPECT_FALSE(job.state.page_pending);
}

TEST_F(TargetFixture, SelectAnotherPrinterRefillsTheName) {
    RecordingDevice other(QStringLiteral("KANTOOR"));
    host.other_printer = &other;
    host.script = [](PrintTarget& form) {
        form.druk_wysig_click();
        EXPECT_EQ(form.drukker_naam, QStringLiteral("KANTOOR"));
        EXPECT_EQ(form.druk_ok_tip, QStringLiteral(" Druk na KANTOOR"));
        form.druk_ok_click();
    };
    EXPECT_TRUE(ask());
    EXPECT_EQ(&job.device(), &other);
}

TEST_F(TargetFixture, ExcelAsksFolderAndNameAndRemembersTheFolder) {
    host.script = [](PrintTarget& form) { form.kies_excel_click(); };
    // A cancelled folder choice ends the report and remembers nothing.
    dialogs.choose(QString());
    EXPECT_FALSE(ask());
    EXPECT_FALSE(job.state.to_spreadsheet);
    EXPECT_FALSE(QFile::exists(QDir(workstation.path()).filePath("excel_uitvoer_gids")));

    QTemporaryDir out;
    job.state.report_name = QStringLiteral("2026 ADRES/TELEFOONLYS");
    dialogs.choose(out.path());
    dialogs.type(QStringLiteral("adreslys"));
    EXPECT_TRUE(ask());
    EXPECT_TRUE(job.state.to_spreadsheet);
    EXPECT_FALSE(job.state.page_pending);
    EXPECT_EQ(job.state.spreadsheet_folder, out.path());
    EXPECT_EQ(job.state.spreadsheet_file, QStringLiteral("adreslys"));
    EXPECT_EQ(job.state.spreadsheet_sheet, 0);
    ASSERT_NE(job.workbook(), nullptr);
    EXPECT_EQ(read_last_folder(QDir(workstation.path()).filePath("excel_uitvoer_gids")),
              out.path());
    const QStringList shown = captions();
    EXPECT_TRUE(shown.contains(QStringLiteral("GIDSADRES VIR EXCEL-UITVOER")));
    EXPECT_TRUE(shown.contains(QString::fromUtf8("EXCEL UITVOER LEêRNAAM")));
}

TEST_F(TargetFixture, HtmlAsksAndThenPrints) {
    QTemporaryDir out;
    job.afrikaans = false;
    dialogs.choose(out.path());
    dialogs.type(QStringLiteral("list"));
    host.script = [](PrintTarget& form) { form.kies_html_click(); };
    EXPECT_TRUE(ask());
    EXPECT_TRUE(job.state.page_pending);
    EXPECT_TRUE(job.state.to_html);
    EXPECT_FALSE(job.state.to_spreadsheet);
    EXPECT_TRUE(captions().contains(QStringLiteral("FOLDER ADDRESS FOR HTML EXPORT")));
    EXPECT_TRUE(captions().contains(QStringLiteral("HTML EXPORT FILE NAME")));
    EXPECT_EQ(read_last_folder(QDir(workstation.path()).filePath("html_uitvoer_gids")), out.path());
    // The report comes out of the printer.
    job.print_page_header(QStringLiteral("LIST"));
    EXPECT_NE(device.find_text(QStringLiteral("PAGE : 1")), nullptr);
}

TEST(LastFolderFile, QuotedTextRoundTrip) {
    QTemporaryDir dir;
    const QString file = dir.filePath("excel_uitvoer_gids");
    EXPECT_EQ(read_last_folder(file), QString());
    ASSERT_TRUE(write_last_folder(file, QStringLiteral("C:\\UITVOER\\2026")));
    EXPECT_EQ(*quoted::read_file(file), QByteArray("\"C:\\UITVOER\\2026\"\r\n"));
    EXPECT_EQ(read_last_folder(file), QStringLiteral("C:\\UITVOER\\2026"));
}

}  // namespace
}  // namespace korvel::reports
