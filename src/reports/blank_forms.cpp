// sk424_prg: the blank forms.
#include "reports/blank_forms.h"

#include <QDate>
#include <algorithm>

#include "reports/workbook.h"
#include "shell/helpers.h"
#include "shell/session.h"
#include "store/record_layouts.h"

namespace korvel::reports {

using store::Code;
using store::Field;
using store::FieldType;
using store::Record;

namespace {

constexpr const auto& L = store::PRSALG;
// Half the lists' padding, so that 31 day columns and the names fit across a landscape page.
constexpr double kSheetPadding = 60;

// A group of character boxes and the field it holds; width 0 takes the field's own.
struct FormBox {
    const Field* field = nullptr;
    int width = 0;
};

// One line of a form. Lines of the same block (above 0) repeat together for every slot of
// the array their first field is.
struct FormLine {
    const char* af;
    const char* en;
    std::array<FormBox, 3> boxes{};
    int block = 0;
};

constexpr FormBox box(const Field& f, int width = 0) {
    return {&f, width};
}
constexpr FormLine line(const char* af, const char* en, FormBox a, FormBox b = {}, FormBox c = {}) {
    return {af, en, {a, b, c}, 0};
}
constexpr FormLine each(int block, const char* af, const char* en, FormBox a, FormBox b = {},
                        FormBox c = {}) {
    return {af, en, {a, b, c}, block};
}

// The labels are the forms' own, letter for letter. Where a form has no English label of its
// own (the bank lines, the appointment type line, the spouse) the staff details' English
// stands in.
constexpr FormLine kPersonal[] = {
    line("POSNOMMER", "POST NUMBER", box(L["PA_POS_NR"])),
    line("VAN", "SURNAME", box(L["PA_VAN"])),
    line("VOLLE NAME", "FULL NAMES", box(L["PA_NAME"])),
    line("TITEL", "TITLE", box(L["PA_TITEL"])),
    line("NOOIENSVAN", "MAIDEN NAME", box(L["PA_N_VAN"])),
    line("PERSAL-NOMMER", "PERSAL-NUMBER", box(L["PA_PERSAL"])),
    line("SACE-NOMMER", "SACE NUMBER", box(L["PA_DPT_NR"])),
    line("TIPE AANSTELLING", "APPOINTMENT TYPE", box(L["PA_P_T"])),
    line("GESLAG", "GENDER", box(L["PA_GESLAG"])),
    line("ID-NOMMER", "ID NUMBER", box(L["PA_ID_NR"])),
    line("GEBOORTEDATUM (jjjj.mm.dd)", "BIRTH DATE (yyyy.mm.dd)", box(L["PA_G_DATUM"])),
    line("HUWELIKSTATUS", "MARITAL STATUS", box(L["PA_HWLK_ST"])),
    line("BROODWINNER (ja/nee)", "BREAD WINNER (yes/no)", box(L["PA_BRD_WNR"])),
    line("POSDADRES : POSBUS", "POSTAL ADDRESS : PO BOX", box(L["PA_P_ADR1"])),
    line("POSDADRES : POSKANTOOR", "POSTAL ADDRESS : POST OFFICE", box(L["PA_P_ADR2"])),
    line("POSDADRES : DORP/STAD", "POSTAL ADDRESS : TOWN/CITY", box(L["PA_P_ADR3"])),
    line("POSDADRES : POSKODE", "POSTAL ADDRESS : POSTAL CODE", box(L["PA_P_KODE"])),
    line("HUISDADRES : STRAAT", "HOME ADDRESS : STREET", box(L["PA_H_ADR1"])),
    line("HUISDADRES : WOONGEBIED", "HOME ADDRESS : SUBURB", box(L["PA_H_ADR2"])),
    line("HUISDADRES : DORP/STAD", "HOME ADDRESS : TOWN/CITY", box(L["PA_H_ADR3"])),
    line("HUISDADRES : POSKODE", "HOME ADDRESS : POSTAL CODE", box(L["PA_H_KODE"])),
    line("TELEFOON : HUIS", "TELEPHONE : HOME", box(L["PA_T_HUIS"])),
    line("TELEFOON : WERK", "TELEPHONE : WORK", box(L["PA_T_WERK"])),
    line("TELEFOON : SEL", "TELEPHONE : CELL", box(L["PA_T_SEL"])),
    line("TELEFOON : ANDER", "TELEPHONE : OTHER", box(L["PA_T_ANDER"])),
    line("E-POSADRES", "EMAIL ADDRESS", box(L["PA_EPOS"])),
    line("HUISTAAL", "HOME LANGUAGE", box(L["PA_H_TAAL"])),
    line("KERKVERBAND", "RELIGION", box(L["PA_KERK"])),
    line("TAALVERMOë", "LANGUAGE ABILITY", box(L["PA_TAALSMB"])),
    line("'REQV'", "REQV", box(L["PA_REQV"])),
    line("REKENAAR GELETTERDHEID", "COMPUTER LITERACY", box(L["PA_ICT_LV"])),
};

constexpr FormLine kFamily[] = {
    line("POSNOMMER", "POST NUMBER", box(L["PA_POS_NR"])),
    line("EGGENOOT", "SPOUSE", box(L["PA_MAN_VR"])),
    line("ID-NOMMER", "ID NUMBER", box(L["PA_MV_ID"])),
    line("TELEFOON : HUIS", "TELEPHONE : HOME", box(L["PA_MV_HTL"])),
    line("TELEFOON : WERK", "TELEPHONE : WORK", box(L["PA_MV_WTL"])),
    line("TELEFOON : SEL", "TELEPHONE : CELL", box(L["PA_MV_SEL"])),
    line("TELEFOON : ANDER", "TELEPHONE : OTHER", box(L["PA_MV_ATL"])),
    line("MED.FONDS - NAAM", "MED.AID - NAME", box(L["PM_FONDS"])),
    line("MED.FONDS - NR", "MED.AID - NO", box(L["PM_F_NR"])),
    line("MED.FONDS - HOOFLID", "MED.AID - MAIN MEMBER", box(L["PM_F_LID"])),
    line("MED.FONDS - LID ID", "MED.AID - MEMBER ID", box(L["PM_F_ID"])),
    line("KONTAKPERSOON", "CONTACT PERSON", box(L["PM_F_KNM"])),
    line("KONTAKNOMMER", "CONTACT NUMBER", box(L["PM_F_KNR"])),
    each(1, "KIND, GEBOORTEDATUM", "CHILD, BIRTH DATE", box(L["PL_KIND"]), box(L["PL_GDTM"])),
};

constexpr FormLine kBank[] = {
    line("POSNOMMER", "POST NUMBER", box(L["PA_POS_NR"])),
    line("BANKNAAM", "BANK NAME", box(L["PB_BNK_NM"])),
    line("TAKNOMMER", "BRANCH NUMBER", box(L["PB_BNK_NR"])),
    line("TELEFOONNOMMER", "TELEPHONE NUMBER", box(L["PB_TEL_NR"])),
    line("FAKSNOMMER", "FAX NUMBER", box(L["PB_FAX_NR"])),
    line("KONTAKPERSOON", "CONTACT PERSON", box(L["PB_KONTAK"])),
    line("TIPE REKENING", "ACCOUNT TYPE", box(L["PB_REK_TPE"])),
    line("REKENINGNOMMER", "ACCOUNT NUMBER", box(L["PB_REK_NR"])),
    line("REKENINGHOUER", "ACCOUNT HOLDER", box(L["PB_REK_HR"])),
    line("BELASTINGNOMMER", "TAX NUMBER", box(L["PB_TAX_NR"])),
};

constexpr FormLine kQualifications[] = {
    line("POSNOMMER", "POST NUMBER", box(L["PA_POS_NR"])),
    each(1, "KWALIFIKASIE", "QUALIFICATION", box(L["PK_GRDE"])),
    each(1, "INSTANSIE", "INSTITUTION", box(L["PK_WAAR"])),
    each(1, "JAAR VOLTOOI", "YEAR COMPLETED", box(L["PK_JAAR"], 4)),
    each(1, "VAK, (S)PES/(H)OOF/(A)NDER", "SUBJECT, (S)PEC/(M)AIN/(O)THER", box(L["PK_SHA_V"]),
         box(L["PK_SHA_T"])),
};

constexpr FormLine kAppointments[] = {
    line("POSNOMMER", "POST NUMBER", box(L["PA_POS_NR"])),
    line("DATUM 1ste AANSTELLING", "DATE 1st APPOINTMENT", box(L["PA_DTM_AAN"])),
    line("DATUM BY DIE SKOOL", "DATE AT THIS SCHOOL", box(L["PA_DTM_SKL"])),
    each(1, "VORIGE SKOOL", "PREVIOUS SCHOOL", box(L["PA_WAAR"])),
    each(1, "POSBESKRYWING", "POST DESCRIPTION", box(L["PA_BSK"])),
    each(1, "TYDELIK/PERMANENT/AFLOS & DATUM", "APPOINTMENT TYPE/DATE", box(L["PA_TPA"]),
         box(L["PA_DTM"])),
};

constexpr FormLine kExperience[] = {
    line("POSNOMMER", "POST NUMBER", box(L["PA_POS_NR"])),
    line("JARE BY DIE SKOOL", "YEARS AT THIS SCHOOL", box(L["PO_JRE_SKL"])),
    line("JARE IN DIE PROVINSIE", "YEARS IN THE PROVINCE", box(L["PO_JRE_PRV"])),
    line("JARE BUITE ONDERWYS", "YEARS OUTSIDE EDCUACTION", box(L["PO_JRE_BTE"])),
    line("JARE IN ONDERWYS", "YEARS IN EDUCATION", box(L["PO_JRE_OND"])),
    line("JARE AS DEPARTEMENTSHOOF", "YEARS AS DEPARTMENTAL HEAD", box(L["PO_JRE_DPT"])),
    line("JARE AS ADJUNKHOOF", "YEARS AS DEPUTY PRINCIPAL", box(L["PO_JRE_A_H"])),
    line("JARE AS SENIOR-ADJUNKHOOF", "YEARS AS SENIOR DEPUTY", box(L["PO_JRE_SAH"])),
    line("JARE AS HOOF", "YEARS AS PRINCIPAL", box(L["PO_JRE_HF"])),
    each(1, "SKOLE : VORIGE SKOOL", "SCHOOLS : PREVIOUS SCHOOL", box(L["PO_SKL"])),
    each(1, "SKOLE : BEGIN-/EINDDATUM", "SCHOOLS : START DATE/END DATE", box(L["PO_VAN"]),
         box(L["PO_TOT"])),
    each(2, "VAKKE : AFKORTING/GRAAD/JARE", "SUBJECTS : REFERENCE/GRADE/YEARS", box(L["PO_VAK"]),
         box(L["PO_GRD"]), box(L["PO_VJR"])),
    each(3, "BUITEMUURS : AKTIWITEIT", "EXTRA-MURAL : ACTIVITY", box(L["PO_AKT"])),
    each(3, "BUITEMUURS : SPAN/JARE", "EXTRA-MURAL : TEAM/YEARS", box(L["PO_SPN"]),
         box(L["PO_BJR"])),
    each(4, "BUITE-ONDERRIG : INSTANSIE", "EXTRA-CURRICULAR : INSTITUTION", box(L["PO_PLK"])),
    each(4, "BUITE-ONDERRIG : POS/JARE", "EXTRA-CURRICULAR : POST/YEARS", box(L["PO_POS"]),
         box(L["PO_PJR"])),
};

struct FormKind {
    const char* caption_af;
    const char* caption_en;
    const char* report_af;
    const char* report_en;
    std::span<const FormLine> lines;
};

// clang-format off
const FormKind kForms[kBlankFormCount + 1] = {
    {"", "", "", "", {}},
    {"PERSOONLIKE BESONDERHEDE", "PERSONAL INFORMATION",
     "PERSOONLIKE BESONDERHEDE : ", "PERSONAL INFORMATION : ", kPersonal},
    {"GESINSINLIGTING", "FAMILY INFORMATION",
     "GESINSINLIGTING : ", "FAMILY INFORMATION : ", kFamily},
    {"BANKBESONDERHEDE", "BANK DETAILS",
     "BANKBESONDERHEDE : ", "BANKING INFORMATION : ", kBank},
    {"KWALIFIKASIES", "QUALIFICATIONS", "KWALIFIKASIES : ", "QUALIFICATIONS : ", kQualifications},
    {"AANSTELLINGS", "APPOINTMENTS", "AANSTELLINGS : ", "APPOINTMENTS : ", kAppointments},
    {"ONDERVINDING", "EXPERIENCE", "ONDERVINDING : ", "EXPERIENCE : ", kExperience},
    {"SKOOLBYWONING", "ATTENDANCE", "SKOOLBYWONING : ", "ATTENDANCE : ", {}},
};
// clang-format on

// Characters a group of boxes holds: a text field its width, a date "YYYY.MM.DD", a number two.
int box_width(const FormBox& b) {
    if (b.width > 0)
        return b.width;
    switch (b.field->type) {
        case FieldType::Date:
            return 10;
        case FieldType::Int16:
            return 2;
        default:
            return b.field->width;
    }
}

// The value a box group shows: text as stored, a date in the dot form, a number unless 0 (an
// empty record holds 0).
QString box_value(const Record& r, const FormBox& b, int slot) {
    switch (b.field->type) {
        case FieldType::Date: {
            const std::optional<QDate> d = r.date(*b.field, slot);
            return d ? shell::date_to_text(*d) : QString();
        }
        case FieldType::Int16: {
            const int n = r.int16(*b.field, slot);
            return n == 0 ? QString() : QString::number(n);
        }
        default:
            return r.text(*b.field, slot);
    }
}

// Surname, title and initials, blank-separated, as the forms' titles and the sheet show them.
QString person_name(const Record& r) {
    QStringList parts = {r.text(L["PA_VAN"]).trimmed(), r.text(L["PA_TITEL"]).trimmed(),
                         shell::initials(r.text(L["PA_NAME"]).trimmed())};
    parts.removeAll(QString());
    return parts.join(u' ');
}

}  // namespace

BlankForms::BlankForms(shell::Session& session, PrintJob& job, PrintTargetHost* host)
    : StaffSelection(session, job, host) {}

QString BlankForms::form_text(const char* af, const char* en) const {
    return QString::fromUtf8(taal_afrikaans ? af : en);
}

void BlankForms::form_load() {
    caption = tr("BLANKO VORMS", "BLANK FORMS");
    for (int i = 1; i <= kBlankFormCount; ++i)
        druk_opsie_captions[size_t(i)] = tr(kForms[i].caption_af, kForms[i].caption_en);
    taal_keuse = {QStringLiteral("AFRIKAANS"), QStringLiteral("ENGLISH")};
    taal_afrikaans = s_.afrikaans;
    maand_lys_items.clear();
    for (int m = 1; m <= 12; ++m)
        maand_lys_items << shell::month_name(m, s_.afrikaans);
    maand_lys = QDate::currentDate().month();
    opsies_ok_tip = tr("Begin met drukwerk", "Start printing");
    load_selection();
    prs_lys_selected.assign(prs_lys.size(), false);
    visible = true;
}

void BlankForms::exit_click() {
    close_files();
    visible = false;
}

void BlankForms::prs_lys_click(int row) {
    if (row < 0 || size_t(row) >= prs_lys_selected.size())
        return;
    prs_lys_selected[size_t(row)] = !prs_lys_selected[size_t(row)];
}

bool BlankForms::opsies_ok_click() {
    if (std::none_of(druk_opsie.begin() + 1, druk_opsie.end(), [](bool on) { return on; }))
        return false;
    if (!start(tr("BLANKO VORMS : ", "BLANK FORMS : ")))
        return false;
    std::vector<int> chosen;
    for (size_t i = 0; i < prs_lys.size() && i < prs_lys_selected.size(); ++i)
        if (prs_lys_selected[i])
            chosen.push_back(prs_lys[i].record);
    if (chosen.empty())
        chosen.push_back(0);  // once, blank
    page_started_ = false;
    // Form by form: everyone's first form, then everyone's second.
    for (int option = 1; option <= kBlankFormCount; ++option) {
        if (!druk_opsie[size_t(option)])
            continue;
        // The attendance sheet lists every staff member whoever is chosen: it prints once.
        if (option == kAttendanceSheetForm) {
            print_attendance_sheet();
            continue;
        }
        for (int record : chosen)
            print_form(option, record);
    }
    job_.finish_report();
    return true;
}

void BlankForms::leave_page() {
    if (page_started_) {
        // The forms put the continuation mark two columns further right than the lists.
        const int keep = job_.state.continuation_columns;
        job_.state.continuation_columns = job_.state.page_columns + 2;
        job_.print_continuation_mark();
        job_.state.continuation_columns = keep;
    }
    page_started_ = true;
}

void BlankForms::start_form_page(const QString& title) {
    leave_page();
    job_.state.page_pending = true;
    job_.print_page_header(title);
    if (job_.state.to_spreadsheet)
        return;
    PrintDevice& d = job_.device();
    d.set_scale_mode(ScaleMode::Characters);
    d.set_font_size(8);
    d.set_current_x(0);
    d.set_current_y(d.current_y() + 1);
}

void BlankForms::next_line_room() {
    if (job_.state.to_spreadsheet)
        return;
    if (job_.device().current_y() >= job_.state.page_bottom - 4)
        start_form_page(form_title_);
}

void BlankForms::print_form(int option, int record) {
    if (option < 1 || option >= kAttendanceSheetForm)
        return;
    const FormKind& kind = kForms[option];
    Record r(L);
    if (record > 0 && s_.read_record(Code::PRSALG, record))
        r = s_.working(Code::PRSALG);
    const bool filled = record > 0;
    job_.state.report_name = form_text(kind.report_af, kind.report_en);
    form_title_ = job_.state.report_name + (filled ? person_name(r) : QString());
    start_form_page(form_title_);

    auto print_line = [&](const FormLine& l, int slot, bool shade) {
        next_line_room();
        std::vector<int> more;
        QStringList values;
        for (const FormBox& b : l.boxes) {
            if (b.field == nullptr)
                continue;
            if (b.field != l.boxes[0].field)
                more.push_back(box_width(b));
            values << (filled ? box_value(r, b, slot) : QString());
        }
        print_form_line(form_text(l.af, l.en), box_width(l.boxes[0]), shade, false, more, values);
    };

    const std::span<const FormLine> lines = kind.lines;
    for (size_t i = 0; i < lines.size();) {
        if (lines[i].block == 0) {
            print_line(lines[i++], 0, false);
            continue;
        }
        size_t end = i;
        while (end < lines.size() && lines[end].block == lines[i].block)
            ++end;
        // Slot 0 of an array is not used; each entry starts on a shaded line.
        for (int slot = 1; slot < lines[i].boxes[0].field->count; ++slot)
            for (size_t k = i; k < end; ++k)
                print_line(lines[k], slot, k == i);
        i = end;
    }
}

void BlankForms::print_form_line(const QString& label, int width, bool shade, bool framed,
                                 std::span<const int> more_widths, const QStringList& values,
                                 bool dividers) {
    std::vector<int> widths{width};
    widths.insert(widths.end(), more_widths.begin(), more_widths.end());
    if (job_.state.to_spreadsheet) {
        Workbook* book = job_.workbook();
        if (book == nullptr || job_.state.spreadsheet_sheet < 1)
            return;
        Sheet& ws = book->sheet(job_.state.spreadsheet_sheet);
        const int row = job_.state.spreadsheet_row++;
        ws.put(row, 0, label);
        for (size_t g = 0; g < widths.size(); ++g)
            ws.put(row, int(g) + 1, values.value(qsizetype(g)).left(widths[g]));
        return;
    }
    PrintDevice& d = job_.device();
    const double y = d.current_y();
    if (framed) {
        d.set_current_x(4);
        d.print(label.leftJustified(33, u' ', true), true);
        job_.draw_box(2, y - 0.25, 30.5, y + 1.25);
    } else {
        d.set_current_x(6);
        d.print(label.leftJustified(31, u' ', true), true);
    }
    const double limit = job_.clip_limit();
    double start = 31;
    for (size_t g = 0; g < widths.size() && start < limit; ++g) {
        const double end = start + 2.0 * widths[g];
        const double right = std::min(end, limit);
        if (shade && right - 0.15 > start + 0.15)
            d.filled_box(start + 0.15, y + 0.15, right - 0.15, y + 1.1, 0xE0E0E0);
        job_.draw_box(start, y - 0.25, end, y + 1.25);
        if (dividers)
            for (double x = start + 2; x < right; x += 2)
                job_.draw_rule(x, y - 0.25, x, y + 1.25);
        const QString value = values.value(qsizetype(g)).left(widths[g]);
        for (qsizetype i = 0; i < value.size() && start + 2.0 * (double(i) + 1) <= right; ++i) {
            const QString ch(value.at(i));
            d.set_current_x(start + 2.0 * double(i) + (2 - d.text_width(ch)) / 2);
            d.set_current_y(y);
            d.print(ch, true);
        }
        start = end + 2;
    }
    d.set_current_x(0);
    d.set_current_y(y + 2);
}

PrintGrid BlankForms::attendance_sheet_grid() {
    PrintGrid grid;
    const QDate first(s_.ledger_year.toInt(), std::clamp(maand_lys, 1, 12), 1);
    const int days = first.isValid() ? first.daysInMonth() : 0;
    grid.resize(2, 1 + days);
    grid.fixed_rows = 2;
    grid.set_text(0, 0, form_text("PERSONEELLID", "STAFF MEMBER"));
    for (int day = 1; day <= days; ++day) {
        const QDate date = first.addDays(day - 1);
        grid.column(day).alignment = kAlignCentre;
        grid.set_text(0, day, QString::number(day));
        grid.set_text(1, day, shell::day_name(date.dayOfWeek() % 7 + 1, taal_afrikaans).left(1));
    }
    std::vector<QStringList> rows;
    for (int number : selected_records())
        rows.push_back({person_name(read_selected(number))});
    if (kies_volgorde == StaffOrder::Alphabetic)
        std::stable_sort(rows.begin(), rows.end(),
                         [](const QStringList& a, const QStringList& b) { return a[0] < b[0]; });
    fill_rows(grid, std::move(rows));
    return grid;
}

void BlankForms::print_attendance_sheet() {
    const FormKind& kind = kForms[kAttendanceSheetForm];
    leave_page();
    job_.state.report_name = form_text(kind.report_af, kind.report_en);
    PrintGrid grid = attendance_sheet_grid();
    print_pages(grid,
                job_.state.report_name +
                    shell::month_name(std::clamp(maand_lys, 1, 12), taal_afrikaans) + u' ' +
                    s_.ledger_year,
                {}, centred_table(), kSheetPadding, kLandscapeText);
}

}  // namespace korvel::reports
