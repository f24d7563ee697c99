#include "staff/lurits_import.h"

#include <QDir>
#include <QFileInfo>
#include <cmath>

#include "platform/winpath.h"
#include "shell/helpers.h"
#include "store/record_layouts.h"

namespace korvel::staff {

using reports::WorkbookCell;
using store::Code;
using store::Field;
using store::PRSALG;
using store::Record;

namespace {

const QDate kSerialZero(1899, 12, 30);

// A date column: a date cell or a number is a day serial; a text is read year first once "/"
// became "."; anything else is no date.
std::optional<QDate> cell_date(const WorkbookCell& c) {
    if (c.kind == WorkbookCell::Kind::Date || c.kind == WorkbookCell::Kind::Number) {
        if (c.number < 1 || c.number > 2958465) {  // up to 9999-12-31
            return std::nullopt;
        }
        return kSerialZero.addDays(static_cast<qint64>(std::floor(c.number)));
    }
    QString t = c.text.trimmed();
    t.replace(u'/', u'.');
    const QDate d = QDate::fromString(t, QStringLiteral("yyyy.M.d"));
    return d.isValid() ? std::optional<QDate>(d) : std::nullopt;
}

QString first_letter(const WorkbookCell& c) {
    return c.as_text().trimmed().left(1);
}

void message(shell::Session& s, const QString& af, const QString& en) {
    s.dialogs().message(s.tr(af, en), ui::Icon::Critical);
}

}  // namespace

std::optional<int> lurits_population(const QString& word) {
    static const char* const kWords[] = {"BLACK AFRICAN", "COLOURED", "ASIAN", "ASIAN/INDIAN",
                                         "WHITE"};
    const QString w = word.trimmed().toUpper();
    for (int i = 0; i < 5; ++i) {
        if (w == QLatin1String(kWords[i])) {
            return i + 1;
        }
    }
    return std::nullopt;
}

std::optional<std::vector<Record>> convert_lurits_sheet(shell::Session& s,
                                                        const reports::WorkbookReader& sheet,
                                                        const QString& file,
                                                        ui::Progress* progress) {
    std::vector<Record> out;
    Record& r = s.working(Code::PRSALG);
    for (int row = kLuritsFirstRow; row <= kLuritsLastRow; ++row) {
        if (progress != nullptr) {
            progress->step(row - kLuritsFirstRow + 1);
        }
        const auto cell = [&sheet, row](int column) { return sheet.cell(row, column); };
        if (cell(3).as_text().trimmed().isEmpty()) {
            continue;
        }
        // Years in education must fit the record's whole number.
        const WorkbookCell years = cell(17);
        int years_value = 0;
        if (years.kind != WorkbookCell::Kind::Empty) {
            bool ok = years.kind != WorkbookCell::Kind::Text;
            double v = years.number;
            if (!ok) {
                v = years.text.trimmed().toDouble(&ok);
                ok = ok || years.text.trimmed().isEmpty();
            }
            if (!ok || !std::isfinite(v) || std::round(v) > 32767 || std::round(v) < -32768) {
                message(
                    s,
                    QStringLiteral("LêER ") + file + QStringLiteral(", RY ") +
                        QString::number(row) + QStringLiteral(", KOLOM 17: '") + years.as_text() +
                        QStringLiteral("' IS NIE 'N GETAL TOT 32767 NIE ... NIKS IS INGEVOER NIE!"),
                    QStringLiteral("FILE ") + file + QStringLiteral(", ROW ") +
                        QString::number(row) + QStringLiteral(", COLUMN 17: '") + years.as_text() +
                        QStringLiteral("' IS NOT A NUMBER UP TO 32767 ... NOTHING WAS IMPORTED!"));
                return std::nullopt;
            }
            years_value = static_cast<int>(std::round(v));
        }

        r.set_text(PRSALG["PA_POS_NR"], QStringLiteral("L") + QString::number(row - 16));
        r.set_text(PRSALG["PA_ID_NR"], cell(1).as_text().trimmed());
        r.set_text(PRSALG["PA_PERSAL"], cell(2).as_text().trimmed());
        r.set_text(PRSALG["PA_VAN"], cell(3).as_text().trimmed());
        r.set_text(PRSALG["PA_NAME"], cell(4).as_text().trimmed());
        r.set_text(PRSALG["PA_TITEL"], cell(6).as_text().trimmed());
        r.set_text(PRSALG["PA_GESLAG"], first_letter(cell(7)));
        // An unknown word keeps the population of the row before.
        if (const std::optional<int> code = lurits_population(cell(8).as_text())) {
            r.set_text(PRSALG["PA_RAS"], QString::number(*code));
        }
        const std::optional<QDate> birth = cell_date(cell(9));
        r.set_date(PRSALG["PA_G_DATUM"], birth.value_or(QDate()));
        r.set_text(PRSALG["PA_TAAL"], first_letter(cell(10)));
        const std::optional<QDate> at_school = cell_date(cell(11));
        r.set_date(PRSALG["PA_DTM_SKL"], at_school.value_or(QDate()));
        r.set_text(PRSALG["PA_TPA"], first_letter(cell(12)), 1);
        r.set_int16(PRSALG["PO_JRE_OND"], years_value);
        const QString paymaster = cell(18).as_text().trimmed();
        if (paymaster.compare(QStringLiteral("State"), Qt::CaseInsensitive) == 0) {
            r.set_text(PRSALG["PA_OD_BL"], QStringLiteral("O"));
        } else if (paymaster.compare(QStringLiteral("SGB"), Qt::CaseInsensitive) == 0) {
            r.set_text(PRSALG["PA_OD_BL"], QStringLiteral("B"));
        }
        out.push_back(r);
    }
    return out;
}

int import_lurits_staff(shell::Session& s) {
    if (s.dialogs().ask(s.tr("WIL U DENITIEF LURITS PERSONEELBESONDERHEDE INVOER ?",
                             "DO YOU REALLY WISH TO IMPORT LURITS STAFF INFORMATION ?"),
                        ui::Buttons::YesNo, ui::Icon::Question,
                        ui::Answer::No) != ui::Answer::Yes) {
        return 0;
    }
    // The dialog opens at the VESPARINE folder of the program drive, else of the data tree.
    QString start = winpath::join(s.folders.program_drive, QStringLiteral("VESPARINE"));
    if (!s.fs().folder_exists(start)) {
        start = s.folders.admin.section(u'\\', 0, -2);
    }
    const QString file = s.dialogs().choose_file(
        s.tr("GIDSADRES VIR LURITSSpreadsheet??? LêER",
             "FOLDER ADDRESS OF LURITSSpreadsheet??? FILE"),
        s.fs().native(start),
        // Either kind of workbook shows at once; each mask is there on its own as well.
        QStringLiteral("LURITS (*.xls;*.xlsx)|*.xls;*.xlsx|LURITS (*.xls)|*.xls|"
                       "LURITS (*.xlsx)|*.xlsx"),
        false);
    if (file.isEmpty()) {
        return 0;
    }
    QString why;
    const std::unique_ptr<reports::WorkbookReader> sheet = reports::open_workbook(file, &why);
    if (!sheet) {
        message(s,
                QStringLiteral("LêER ") + file + QStringLiteral(" KAN NIE GELEES WORD NIE (") +
                    why + QStringLiteral(") ... NIKS IS INGEVOER NIE!"),
                QStringLiteral("FILE ") + file + QStringLiteral(" CANNOT BE READ (") + why +
                    QStringLiteral(") ... NOTHING WAS IMPORTED!"));
        return 0;
    }
    if (!s.fs().folder_exists(s.folders.staff)) {
        s.fs().create_folder(s.folders.staff);
    }
    if (!s.is_open(Code::PRSALG) && !s.open_file(Code::PRSALG)) {
        return 0;
    }
    // One bar over both halves: the rows read, then the records written. Nothing is written
    // until every row has been read, and what is being written is not broken off: no cancel.
    std::unique_ptr<ui::Progress> bar =
        s.dialogs().progress(s.tr("LURITS personeelbesonderhede word ingevoer ...",
                                  "Importing LURITS staff information ..."),
                             2 * kLuritsRows, false);
    const std::optional<std::vector<Record>> records =
        convert_lurits_sheet(s, *sheet, file, bar.get());
    sheet->close();
    if (!records) {
        return 0;
    }
    const Record last = s.working(Code::PRSALG);
    const auto total = static_cast<qint64>(records->size());
    int added = 0;
    for (const Record& r : *records) {
        s.working(Code::PRSALG) = r;
        if (!s.append_record(Code::PRSALG)) {
            break;
        }
        ++added;
        bar->step(kLuritsRows + static_cast<int>(added * kLuritsRows / total));
    }
    s.working(Code::PRSALG) = last;
    bar.reset();  // the bar goes before the message comes
    s.dialogs().message(
        QFileInfo(file).fileName() + s.tr(" INVOER VOLTOOI ....", " IMPORT COMPLETED ...."),
        ui::Icon::Information);
    return added;
}

}  // namespace korvel::staff
