// The blank forms over staff records written here for the case, drawn on the recording device.

#include <gtest/gtest.h>

#include <QTemporaryDir>

#include "platform/drive_map.h"
#include "reports/blank_forms.h"
#include "reports/recording_device.h"
#include "shell/session.h"
#include "store/record_layouts.h"
#include "ui/scripted_dialogs.h"

namespace korvel::reports {
namespace {

using store::Code;
using store::PRSALG;
using Kind = RecordedCall::Kind;

// Character cells of the page, in twips.
constexpr double kCol = 120;
constexpr double kRow = 240;

class BlankFormsTest : public ::testing::Test {
  protected:
    BlankFormsTest() {
        session = shell::Session::on_drive(
            dialogs, platform::DriveMap::explicit_map({{QStringLiteral("C:"), dir.path()}}),
            QStringLiteral("C:"), QStringLiteral("2026"));
        session->afrikaans = true;
        EXPECT_TRUE(session->open_file(Code::PRSALG));
        job.clock = [] { return QDateTime(QDate(2026, 3, 4), QTime(9, 5, 7)); };
        form = std::make_unique<BlankForms>(*session, job);
    }
    void staff(const char* post, const char* surname, const char* state = "") {
        store::Record& r = session->working(Code::PRSALG);
        r.clear();
        r.set_text(PRSALG["PA_POS_NR"], QString::fromLatin1(post));
        r.set_text(PRSALG["PA_VAN"], QString::fromLatin1(surname));
        r.set_text(PRSALG["PA_NAME"], QStringLiteral("ANNA MARIE"));
        r.set_text(PRSALG["PA_TITEL"], QStringLiteral("MEV"));
        r.set_text(PRSALG["PA_AKTIEF"], QString::fromLatin1(state));
        r.set_text(PRSALG["PA_HWLK_ST"], QStringLiteral("g"));
        r.set_date(PRSALG["PA_G_DATUM"], QDate(1980, 5, 7));
        r.set_text(PRSALG["PL_KIND"], QStringLiteral("JAN"), 2);
        r.set_date(PRSALG["PL_GDTM"], QDate(2010, 1, 31), 2);
        session->append_record(Code::PRSALG);
    }
    // The form loaded, its target the recording device (or a workbook).
    void load(bool workbook = false) {
        form->form_load();
        form->choose_target = [workbook](PrintJob& j) {
            if (workbook) {
                j.begin_spreadsheet(QString(), QStringLiteral("unused"));
            } else {
                j.print_setup();
                j.state.page_pending = true;
            }
            return true;
        };
    }
    // The text call of exactly this text.
    const RecordedCall* text(const QString& t) const {
        for (const RecordedCall& c : device.calls())
            if (c.kind == Kind::Text && c.text == t)
                return &c;
        return nullptr;
    }
    std::vector<RecordedCall> calls(Kind kind) const {
        std::vector<RecordedCall> out;
        for (const RecordedCall& c : device.calls())
            if (c.kind == kind)
                out.push_back(c);
        return out;
    }

    QTemporaryDir dir;
    ui::ScriptedDialogs dialogs;
    std::unique_ptr<shell::Session> session;
    RecordingDevice device;
    PrintJob job{device, dialogs};
    std::unique_ptr<BlankForms> form;
};

TEST_F(BlankFormsTest, AFormLineCutsItsLabelAndDrawsItsBoxesInsideThePage) {
    load();
    job.print_setup();
    device.set_font_size(8);
    device.set_current_y(10);
    const int second[] = {3};
    form->print_form_line(QStringLiteral("A LABEL OF FORTY CHARACTERS, MUCH TOO LONG"), 5, true,
                          false, second, {QStringLiteral("AB"), QStringLiteral("XYZW")});
    EXPECT_DOUBLE_EQ(device.current_y(), 12);

    const RecordedCall* label = device.find_text(QStringLiteral("A LABEL"));
    ASSERT_NE(label, nullptr);
    EXPECT_EQ(label->text, QStringLiteral("A LABEL OF FORTY CHARACTERS, MU"));
    EXPECT_DOUBLE_EQ(label->x1, 6 * kCol);
    // A character centred in its two columns: 0.8 of a column wide at 8 points.
    const RecordedCall* b = text(QStringLiteral("B"));
    ASSERT_NE(b, nullptr);
    EXPECT_DOUBLE_EQ(b->x1, (33 + 0.6) * kCol);
    // The second group stands 2 columns past the first and holds 3 characters.
    const RecordedCall* z = text(QStringLiteral("Z"));
    ASSERT_NE(z, nullptr);
    EXPECT_DOUBLE_EQ(z->x1, (43 + 4 + 0.6) * kCol);
    EXPECT_EQ(text(QStringLiteral("W")), nullptr);
    const std::vector<RecordedCall> shades = calls(Kind::Box);
    ASSERT_EQ(shades.size(), 2u);
    EXPECT_DOUBLE_EQ(shades[0].x1, 31.15 * kCol);
    EXPECT_DOUBLE_EQ(shades[0].y1, 10.15 * kRow);
    EXPECT_EQ(shades[0].colour, 0xE0E0E0);
    EXPECT_DOUBLE_EQ(shades[1].x1, 43.15 * kCol);
    // Two boxes of four lines, 4 + 2 dividers.
    EXPECT_EQ(calls(Kind::Line).size(), 14u);

    // A 50-character field runs past the page: box, shade and dividers stop at its edge.
    device.clear();
    form->print_form_line(QStringLiteral("E-POSADRES"), 50, true);
    const double edge = (job.state.page_columns - 0.5) * kCol;
    for (const RecordedCall& c : device.calls()) {
        EXPECT_LE(c.x1, edge);
        EXPECT_LE(c.x2, edge);
    }
}

TEST_F(BlankFormsTest, WithNobodyChosenAFormHasEmptyBoxesAndNoName) {
    staff("P1", "ADAMS");
    load();
    form->druk_opsie[1] = true;
    ASSERT_TRUE(form->opsies_ok_click());
    EXPECT_NE(device.find_text(QStringLiteral("PERSOONLIKE BESONDERHEDE :")), nullptr);
    EXPECT_EQ(device.find_text(QStringLiteral("ADAMS")), nullptr);
    for (const RecordedCall& c : calls(Kind::Text))
        EXPECT_FALSE(c.x1 >= 31 * kCol && c.text.size() == 1) << c.text.toStdString();
    EXPECT_EQ(job.state.report_name, QStringLiteral("PERSOONLIKE BESONDERHEDE : "));
}

TEST_F(BlankFormsTest, TheFormLanguageChangesTheFormsTextAndNothingElse) {
    staff("P1", "ADAMS");
    load();
    form->druk_opsie[6] = true;
    form->prs_lys_click(0);
    form->opsies_ok_click();
    const std::vector<RecordedCall> afrikaans = device.calls();
    device.clear();
    form->taal_keuse_click(1);
    form->opsies_ok_click();
    const std::vector<RecordedCall> english = device.calls();

    ASSERT_EQ(afrikaans.size(), english.size());
    int differ = 0;
    for (size_t i = 0; i < english.size(); ++i) {
        EXPECT_EQ(afrikaans[i].kind, english[i].kind);
        EXPECT_DOUBLE_EQ(afrikaans[i].y1, english[i].y1);
        if (afrikaans[i].text != english[i].text)
            ++differ;  // a centred title moves with its length
        else
            EXPECT_DOUBLE_EQ(afrikaans[i].x1, english[i].x1);
    }
    EXPECT_GT(differ, 10);
    EXPECT_NE(device.find_text(QStringLiteral("YEARS OUTSIDE EDCUACTION")), nullptr);
    EXPECT_NE(device.find_text(QStringLiteral("BLADSY : 1")), nullptr);  // the program's
}

TEST_F(BlankFormsTest, FormsPrintFormByFormAndBreakWithTheMarkAtTheRight) {
    staff("P1", "ADAMS");
    staff("P2", "BOTHA");
    load();
    form->druk_opsie[1] = form->druk_opsie[4] = true;
    form->prs_lys_click(0);
    form->prs_lys_click(1);
    form->opsies_ok_click();
    QStringList titles;
    for (const RecordedCall& c : calls(Kind::Text))
        if (c.text.contains(u':') && c.text.contains(QStringLiteral("MEV")))
            titles << c.text;
    titles.removeDuplicates();
    EXPECT_EQ(titles,
              QStringList({"PERSOONLIKE BESONDERHEDE : ADAMS MEV A M",
                           "PERSOONLIKE BESONDERHEDE : BOTHA MEV A M",
                           "KWALIFIKASIES : ADAMS MEV A M", "KWALIFIKASIES : BOTHA MEV A M"}));
    // Each form runs onto a second page; every page but the last carries the mark.
    const RecordedCall* mark = device.find_text(QStringLiteral("2.../"));
    ASSERT_NE(mark, nullptr);
    EXPECT_DOUBLE_EQ(mark->x1, (job.state.page_columns - 6) * kCol);
    EXPECT_EQ(device.count(Kind::NewPage), 7);
    EXPECT_EQ(device.texts().filter(QStringLiteral(".../")).size(), 7);
}

TEST_F(BlankFormsTest, AWorkbookHoldsARowPerLineWithTheValuesAsStored) {
    staff("P1", "ADAMS");
    load();
    job.begin_spreadsheet(dir.path(), QStringLiteral("forms"));
    form->print_form(1, form->prs_lys.front().record);
    form->print_form(2, form->prs_lys.front().record);
    ASSERT_EQ(job.workbook()->sheet_count(), 2);
    const auto row_of = [&](int sheet, const QString& label) {
        const Sheet& ws = job.workbook()->sheet(sheet);
        for (const auto& [at, cell] : ws.cells)
            if (at.second == 0 && cell.text == label) {
                QStringList out;
                for (int c = 1; ws.find(at.first, c) != nullptr; ++c)
                    out << ws.find(at.first, c)->text;
                return out;
            }
        return QStringList{QStringLiteral("missing")};
    };
    EXPECT_EQ(row_of(1, "GEBOORTEDATUM (jjjj.mm.dd)"), QStringList{"1980.05.07"});
    EXPECT_EQ(row_of(1, "HUWELIKSTATUS"), QStringList{"g"});  // codes as stored
    EXPECT_EQ(row_of(1, "POSDADRES : POSBUS"), QStringList{""});
    // The children repeat; the second holds a name and a birth date.
    const Sheet& family = job.workbook()->sheet(2);
    QStringList children;
    for (const auto& [at, cell] : family.cells)
        if (at.second == 0 && cell.text == u"KIND, GEBOORTEDATUM")
            children << family.find(at.first, 1)->text + u'|' + family.find(at.first, 2)->text;
    EXPECT_EQ(children, QStringList({"|", "JAN|2010.01.31", "|", "|", "|"}));
    job.end_spreadsheet();
}

TEST_F(BlankFormsTest, TheAttendanceSheetHasADayColumnWithItsLetterAndNoInactiveStaff) {
    staff("P1", "ADAMS");
    staff("P2", "BOTHA", "*");
    load();
    form->taal_keuse_click(1);
    form->maand_lys = 2;
    const PrintGrid grid = form->attendance_sheet_grid();
    ASSERT_EQ(grid.cols(), 1 + 28);
    ASSERT_EQ(grid.rows(), 3);
    EXPECT_EQ(grid.text(0, 0), QStringLiteral("STAFF MEMBER"));
    EXPECT_EQ(grid.text(0, 1), QStringLiteral("1"));
    EXPECT_EQ(grid.text(1, 1), QStringLiteral("S"));  // 1 February 2026, a Sunday
    EXPECT_EQ(grid.text(1, 2), QStringLiteral("M"));
    EXPECT_EQ(grid.text(2, 0), QStringLiteral("ADAMS MEV A M"));
}

}  // namespace
}  // namespace korvel::reports
