#include "yearend/staff_export.h"

#include <xlsxwriter.h>

#include <QDir>
#include <QFileInfo>
#include <QHash>
#include <algorithm>
#include <filesystem>
#include <system_error>

#include "platform/winpath.h"
#include "shell/helpers.h"
#include "shell/main_menu.h"
#include "store/record_file.h"

namespace korvel::yearend {

using store::PRSALG;

const std::array<ExportField, kExportFieldCount> kExportFields = {{
    {"POSNOMMER", "POST NUMBER", "PA_POS_NR"},
    {"AKTIEF/ONAKTIEF", "ACTIVE/INACTIVE", "PA_AKTIEF"},
    {"VAN", "SURNAME", "PA_VAN"},
    {"NAME", "NAMES", "PA_NAME"},
    {"TITEL", "TITLE", "PA_TITEL"},
    {"NOOIENSVAN", "MAIDEN NAME", "PA_N_VAN"},
    {"PERSAL NOMMER", "PERSAL NUMBER", "PA_PERSAL"},
    {"GESLAG", "GENDER", "PA_GESLAG"},
    {"ID-NOMMER", "ID NUMBER", "PA_ID_NR"},
    {"GEBOORTEDATUM", "BIRTH DATE", "PA_G_DATUM"},
    {"HUWELIKSTAAT", "MARITAL STATUS", "PA_HWLK_ST"},
    {"BROODWINNER", "BREAD WINNER", "PA_BRD_WNR"},
    {"UNIE NAAM", "UNION NAME", "PA_UN_NAAM"},
    {"DEPARTEMENT/BL", "DEPARTMENT/GB", "PA_OD_BL"},
    {"BEVOLKINGSGROEP", "POPULATION GROUP", "PA_RAS"},
    {"TAAL", "LANGUAGE", "PA_TAAL"},
    {"GEBREK", "DISABILITY", "PA_GEBREK"},
    {"PERMANENT/TYDELIK", "PERMANENT/TEMPORARY", "PA_P_T"},
    {"TAALSIMBOOL", "LANGUAGE SYMBOL", "PA_TAALSMB"},
    {"REQV", "REQV", "PA_REQV"},
    {"KLASNOMMER", "CLASS NUMBER", "PK_KLAS_NR"},
    {"REGISTERKLAS", "REGISTER CLASS", "PK_REG_KLS"},
    {"POSADRES LYN 1", "POSTAL ADDRESS 1", "PA_P_ADR1"},
    {"POSADRES LYN 2", "POSTAL ADDRESS 2", "PA_P_ADR2"},
    {"POSADRES LYN 3", "POSTAL ADDRESS 3", "PA_P_ADR3"},
    {"POSADRES POSKODE", "POSTAL CODE", "PA_P_KODE"},
    {"HUISADRES LYN 1", "HOME ADDRESS 1", "PA_H_ADR1"},
    {"HUISADRES LYN 2", "HOME ADDRESS 2", "PA_H_ADR2"},
    {"HUISADRES LYN 3", "HOME ADDRESS 3", "PA_H_ADR3"},
    {"HUISADRES POSKODE", "HUISADRES POSKODE", "PA_H_KODE"},
    {"HUISTELEFOONNOMMER", "HOME PHONE NUMBER", "PA_T_HUIS"},
    {"WERKTELEFOONNOMMER", "WORK PHONE NUMBER", "PA_T_WERK"},
    {"SELNOMMER", "CELL NUMBER", "PA_T_SEL"},
    {"ANDER TELEFOONNOMMER", "OTHER PHONE NUMBER", "PA_T_ANDER"},
    {"E-POSADRES", "E-POSADRES", "PA_EPOS"},
    {"HUISTAAL", "HOME LANGUAGE", "PA_H_TAAL"},
    {"KERKVERBAND", "RELIGION", "PA_KERK"},
    {"EGGENOOT", "SPOUSE", "PA_MAN_VR"},
    {"EGGENOOT ID-NOMMER", "SPOUSE ID NUMBER", "PA_MV_ID"},
    {"EGGENOOT HUISTEL", "SPOUSE HOME TEL", "PA_MV_HTL"},
    {"EGGENOOT WERKTEL", "SPOUSE WORK TEL", "PA_MV_WTL"},
    {"EGGENOOT SELNR", "SPOUSE CELL NO", "PA_MV_SEL"},
    {"EGGENOOT ANDER TEL", "SPOUSE OTHER TEL", "PA_MV_ATL"},
    {"EGGENOOT E-POSADRES", "EGGENOOT E-POSADRES", "PA_MV_EPS"},
    {"MEDFNDS - NAAM", "MEDAID -NAME", "PM_FONDS"},
    {"MEDFNDS - NR", "MEDAID -NO", "PM_F_NR"},
    {"MEDFNDS - LID", "MEDAID -MEMBER", "PM_F_LID"},
    {"MEDFNDS - LID ID", "MEDAID -MEMBER ID", "PM_F_ID"},
    {"KONTAKNAAM", "CONTACT NAME", "PM_F_KNM"},
    {"KONTAKNR", "CONTACT NO", "PM_F_KNR"},
    {"SACE NR", "SACE NO", "PA_DPT_NR"},
    {"FOR NR", "FOR NO", "PA_FOR_NR"},
    {"LURITS NR", "LURITS NO", ""},
}};

StaffExport::StaffExport(shell::Session& session) : s_(session) {}

StaffExport::~StaffExport() {
    form_unload();
}

void StaffExport::load() {
    caption = s_.tr("UITVOERSTELSEL", "EXPORT SYSTEM");
    heading = s_.tr("PERSONEEL UITVOER", "STAFF EXPORT");
    rekords_jaar_tooltip =
        s_.tr(" Verander JAAR met op-/af-pyltjies; Dubbelklik om rekords te laai ",
              " Change YEAR with up/down arrows; Double click to load records ");
    uitvoer_velde_tooltip = s_.tr(
        " Klik om te selekteer/deselekteer; ALT en Afpyltjie om bestaande keuse tot onder te "
        "kopieer ",
        " Click to select/deselect; ALT and Down arrow to copy current selection to end of list ");
    personeel_lys_columns = {s_.tr("NR", "NO"), s_.tr("POS NR", "PST NO"),
                             s_.tr("VAN & NAME", "SURNAME & NAMES")};
    uitvoer_velde.clear();
    for (const ExportField& f : kExportFields) {
        uitvoer_velde << s_.tr(f.afrikaans, f.english);
    }
    rekords_jaar_lys = shell::ledger_years(s_);
    rekords_jaar_index = static_cast<int>(rekords_jaar_lys.indexOf(s_.ledger_year));
    folder_ = s_.folders.staff;
    s_.open_file(store::Code::PRSALG, folder_);
    load_list();
}

void StaffExport::form_load() {
    load();
    if (personeel_lys.empty()) {
        return;
    }
    QString start = winpath::join(winpath::drive_of(s_.folders.admin), QStringLiteral("VESPARINE"));
    if (!s_.fs().folder_exists(start)) {
        start = s_.folders.admin;
    }
    const QString proposed =
        QDir(s_.fs().native(start)).filePath(s_.tr("PERSONEEL", "STAFF") + QStringLiteral(".xlsx"));
    target_file = s_.dialogs().choose_file(
        s_.tr("GIDSADRES VIR PERSONEEL UITVOERLEêR", "FOLDER ADDRESS OF STAFF EXPORT FILE"),
        proposed, QStringLiteral("*.xlsx"), true);
    if (target_file.isEmpty()) {
        form_unload();
        return;
    }
    uitvoer_velde_visible = true;
}

void StaffExport::load_list() {
    personeel_lys.clear();
    s_.scan_records(store::Code::PRSALG, [&](int number, store::Record& r) {
        const QString post = r.text(PRSALG["PA_POS_NR"]).trimmed();
        if (!post.isEmpty() && r.text(PRSALG["PA_AKTIEF"]).trimmed().isEmpty()) {
            personeel_lys.push_back(
                {number, post,
                 r.text(PRSALG["PA_VAN"]).trimmed() + u' ' + r.text(PRSALG["PA_NAME"]).trimmed()});
        }
    });
    std::stable_sort(personeel_lys.begin(), personeel_lys.end(),
                     [](const ExportRow& a, const ExportRow& b) { return a.names < b.names; });
}

void StaffExport::rekords_jaar_lys_dbl_click(int index) {
    if (index < 0 || index >= rekords_jaar_lys.size()) {
        return;
    }
    rekords_jaar_index = index;
    folder_ = s_.folders.staff.left(s_.folders.staff.size() - 4) + rekords_jaar_lys.at(index);
    if (!s_.fs().folder_exists(folder_)) {
        s_.fs().create_folder(folder_);
    }
    s_.open_file(store::Code::PRSALG, folder_);
    load_list();
    if (personeel_lys.empty()) {
        form_unload();
    }
}

void StaffExport::uitvoer_velde_click(int index) {
    if (index >= 0 && index < kExportFieldCount) {
        uitvoer_velde_selected[size_t(index)] = !uitvoer_velde_selected[size_t(index)];
    }
}

void StaffExport::uitvoer_velde_alt_down(int index) {
    if (index >= 0 && index < kExportFieldCount) {
        std::fill(uitvoer_velde_selected.begin() + index, uitvoer_velde_selected.end(),
                  bool(uitvoer_velde_selected[size_t(index)]));
    }
}

QString StaffExport::heading_of(int index) const {
    static const char* const kLast[] = {"SACE_NR", "FOR_NR", "LURITS_NR"};
    const int from_end = kExportFieldCount - index;
    return from_end <= 3 ? QString::fromLatin1(kLast[3 - from_end]) : uitvoer_velde.value(index);
}

namespace {

// The fixed-width text of a field as the row is built: text as it stands, a date in the dot
// form, a number as its digits.
QString field_text(const store::Record& r, const store::Field& f) {
    switch (f.type) {
        case store::FieldType::Date:
            return shell::date_to_text(r.date(f).value_or(QDate())).leftJustified(10);
        case store::FieldType::Int16:
            return QString::number(r.int16(f)).leftJustified(6);
        default:
            return r.raw_text(f);
    }
}

// Identity number -> LURITS number, from one read of the year's file.
QHash<QString, QString> lurits_numbers(const platform::FileSystem& fs, const QString& folder) {
    QHash<QString, QString> numbers;
    const QString path = winpath::join(
        folder,
        QString::fromLatin1(store::PRSLURITS.file_name.data(), store::PRSLURITS.file_name.size()));
    auto file = store::RecordFile::open(fs.native(path), store::PRSLURITS.record_length,
                                        store::RecordFile::Access::ReadOnly);
    if (!file) {
        return numbers;
    }
    store::Record r(store::PRSLURITS);
    file->scan(1, file->count(), [&](int, const char* bytes) {
        r.assign(bytes);
        numbers.insert(r.text(store::PRSLURITS["LU_ID_NR"]).trimmed(),
                       r.text(store::PRSLURITS["LU_NR"]).trimmed());
        return true;
    });
    return numbers;
}

}  // namespace

bool StaffExport::write_workbook(const QString& native_path, QString* error) {
    const QFileInfo target(native_path);
    if (target.exists() && !target.isWritable()) {
        *error = native_path;
        return false;
    }
    const QString temporary = native_path + QStringLiteral(".tmp~");
    lxw_workbook_options options{};
    options.constant_memory = LXW_TRUE;
    const QByteArray temporary_bytes = QFile::encodeName(temporary);
    lxw_workbook* book = workbook_new_opt(temporary_bytes.constData(), &options);
    if (book == nullptr) {
        *error = native_path;
        return false;
    }
    lxw_worksheet* sheet = workbook_add_worksheet(book, nullptr);
    std::vector<int> columns;
    for (int i = 0; i < kExportFieldCount; ++i) {
        if (uitvoer_velde_selected[size_t(i)]) {
            worksheet_write_string(sheet, 0, lxw_col_t(columns.size()),
                                   heading_of(i).toUtf8().constData(), nullptr);
            columns.push_back(i);
        }
    }
    std::vector<const store::Field*> fields;
    for (const ExportField& f : kExportFields) {
        fields.push_back(PRSALG.find(f.name));
    }
    const QHash<QString, QString> lurits = lurits_numbers(s_.fs(), folder_);
    store::Record& r = s_.working(store::Code::PRSALG);
    lxw_row_t row = 1;
    const std::unique_ptr<ui::Progress> bar =
        s_.dialogs().progress(caption, int(personeel_lys.size()), false);
    for (const ExportRow& item : personeel_lys) {
        bar->step(int(row) - 1);
        s_.read_record(store::Code::PRSALG, item.record);
        admin_titel = item.names;
        QStringList parts;
        for (const store::Field* f : fields) {
            parts << (f != nullptr ? field_text(r, *f) : QString());
        }
        if (!item.post.isEmpty()) {
            parts.last() = lurits.value(r.text(PRSALG["PA_ID_NR"]).trimmed()).leftJustified(9);
        }
        // The row goes through one text joined by "~", so a "~" inside a field shifts the
        // fields after it, as it always has.
        const QStringList split = parts.join(u'~').split(u'~');
        for (size_t c = 0; c < columns.size(); ++c) {
            const QString value = split.value(columns[c]).trimmed();
            if (!value.isEmpty()) {
                worksheet_write_string(sheet, row, lxw_col_t(c), value.toUtf8().constData(),
                                       nullptr);
            }
        }
        ++row;
    }
    if (workbook_close(book) != LXW_NO_ERROR) {
        QFile::remove(temporary);
        *error = native_path;
        return false;
    }
    std::error_code failed;
    std::filesystem::rename(temporary_bytes.toStdString(),
                            QFile::encodeName(native_path).toStdString(), failed);
    if (failed) {
        QFile::remove(temporary);
        *error = native_path;
        return false;
    }
    return true;
}

void StaffExport::uitvoer_velde_ok_click() {
    QString error;
    if (!write_workbook(target_file, &error)) {
        s_.dialogs().message(s_.tr("DIE LêER  ", "THE FILE  ") + error +
                                 s_.tr("  KAN NIE GESKRYF WORD NIE: IS DIT OOP IN 'N ANDER "
                                       "PROGRAM?",
                                       "  CANNOT BE WRITTEN: IS IT OPEN IN ANOTHER PROGRAM?"),
                             ui::Icon::Critical);
        return;
    }
    s_.dialogs().message(s_.tr("UITVOER VOLTOOI ....", "EXPORT COMPLETED ...."),
                         ui::Icon::Information);
    form_unload();
}

void StaffExport::form_unload() {
    if (unloaded) {
        return;
    }
    unloaded = true;
    // The ledger year's staff file again, as the rest of the program expects it.
    if (!folder_.isEmpty() && folder_.compare(s_.folders.staff, Qt::CaseInsensitive) != 0) {
        s_.open_file(store::Code::PRSALG, s_.folders.staff);
    }
}

}  // namespace korvel::yearend
