#include "reports/staff_lists.h"

#include <QHash>
#include <algorithm>

#include "reports/grid_output.h"
#include "reports/print_target.h"
#include "shell/helpers.h"
#include "shell/session.h"
#include "shell/staff_person.h"
#include "store/record_layouts.h"

namespace korvel::reports {

namespace {

using store::Code;
using store::Record;
constexpr const auto& L = store::PRSALG;

QString S(const char* utf8) {
    return QString::fromUtf8(utf8);
}

// A field of the master record by a name known only at run time.
const store::Field& field_of(const char* name) {
    return *L.find(name);
}

QString trimmed(const Record& r, const char* field, int index = 0) {
    return r.text(field_of(field), index).trimmed();
}

QString date_of(const Record& r, const char* field, int index = 0) {
    const std::optional<QDate> d = r.date(field_of(field), index);
    return d ? shell::date_to_text(*d) : QString();
}

QString number_of(const Record& r, const char* field, int index = 0) {
    return QString::number(r.int16(field_of(field), index));
}

// The lines of a grid cell, one below the other.
QString lines(const QStringList& parts) {
    return parts.join(QStringLiteral("\r\n"));
}

void sort_rows_on(std::vector<QStringList>& rows, int col) {
    std::stable_sort(rows.begin(), rows.end(), [col](const QStringList& a, const QStringList& b) {
        return a.value(col) < b.value(col);
    });
}

}  // namespace

StaffLists::StaffLists(shell::Session& session, PrintJob& job, int option_index,
                       PrintTargetHost* host)
    : StaffSelection(session, job, host), option(option_index) {}

StaffLists::~StaffLists() = default;

bool StaffLists::western_cape() const {
    return s_.school.province_code.trimmed().toUpper() == u"WC";
}

void StaffLists::open_files() {
    StaffSelection::open_files({Code::PRSALG, Code::PRSADD, Code::PRSLURITS});
}

void StaffLists::form_load() {
    caption = tr("PERSONEELBESONDERHEDE", "STAFF DETAILS");
    jr_teks[1] = tr("VAN DATUM", "FROM DATE");
    jr_teks[2] = tr("TOT DATUM", "TO DATE");
    slegs_ouderdomslys_caption = tr("DRUK OUDERDOMSLYS", "PRINT AGE LIST");
    const QDate today = s_.today();
    jr_data[1] = QDate(today.year(), today.month(), 1);
    jr_data[2] = jr_data[1].addMonths(1).addDays(-1);
    open_files();
    load_selection();
    visible = true;
}

void StaffLists::exit_click() {
    close_files();
    visible = false;
}

void StaffLists::kr_ok_click() {
    switch (option) {
        case kStaffListOption:
            print_staff_list();
            break;
        case kAddressListOption:
            print_address_list();
            break;
        case kBirthdayListOption:
            print_birthday_list();
            break;
        case kStaffDetailsOption:
            print_staff_details();
            break;
        default:
            break;
    }
}

void StaffLists::vj_ok_click() {
    print_birthday_list();
}

void StaffLists::slegs_ouderdomslys_click() {
    print_age_list();
}

void StaffLists::load_companions() {
    if (companions_loaded_)
        return;
    open_files();
    lurits_.clear();
    cemis_.clear();
    if (s_.is_open(Code::PRSLURITS)) {
        const auto& U = store::PRSLURITS;
        s_.scan_records(Code::PRSLURITS, [&](int, Record& r) {
            const QString id = r.text(U["LU_ID_NR"]).trimmed();
            if (!id.isEmpty() && !lurits_.contains(id))
                lurits_.insert(id, r.text(U["LU_NR"]).trimmed());
        });
    }
    if (s_.is_open(Code::PRSADD)) {
        const auto& D = store::PRSADD;
        s_.scan_records(Code::PRSADD, [&](int, Record& r) {
            const QString post = store::Store::index_key(r.text(D["PD_POS_NR"]));
            if (!post.isEmpty() && !cemis_.contains(post))
                cemis_.insert(post, r.text(D["PD_CEMIS"]).trimmed());
        });
    }
    companions_loaded_ = true;
}

QString StaffLists::lurits_of(const QString& id) {
    load_companions();
    const QString key = id.trimmed();
    return key.isEmpty() ? QString() : lurits_.value(key);
}

QString StaffLists::cemis_of(const QString& post) {
    load_companions();
    return cemis_.value(store::Store::index_key(post));
}

QString StaffLists::age_text(const QDate& birth, const QDate& day) {
    if (!birth.isValid() || !day.isValid() || day < birth)
        return QString();
    int months = (day.year() - birth.year()) * 12 + (day.month() - birth.month());
    if (day.day() < birth.day())
        --months;
    return QString::number(months / 12) + u':' +
           QString::number(months % 12).rightJustified(2, u'0');
}

QDate StaffLists::birthday_in(const QDate& birth, const QDate& from, const QDate& to) {
    if (!birth.isValid() || !from.isValid() || !to.isValid() || to < from)
        return {};
    for (int y = from.year(); y <= to.year(); ++y) {
        QDate d(y, birth.month(), birth.day());
        if (!d.isValid())
            d = QDate(y, 2, 28);  // 29 February in a year without it
        if (d >= from && d <= to)
            return d;
    }
    return {};
}

// ---- the grids --------------------------------------------------------------------------------

PrintGrid StaffLists::staff_list_grid() {
    const bool wc = western_cape();
    PrintGrid grid;
    grid.set_format_string(s_.afrikaans
                               ? QStringLiteral(">POS|<NAAM|^ID.NR|^G|^T|^PERSAL|^SACE|^LURITS|<") +
                                     (wc ? QStringLiteral("CEMIS NR") : QStringLiteral("'REQV'"))
                               : QStringLiteral(">PST|<NAME|^ID.NO|^G|^L|^PERSAL|^SACE|^LURITS|<") +
                                     (wc ? QStringLiteral("CEMIS NO") : QStringLiteral("REQV")));
    std::vector<QStringList> rows;
    for (int number : selected_records()) {
        const Record& r = read_selected(number);
        const QString post = trimmed(r, "PA_POS_NR");
        rows.push_back({post, list_name(r), r.text(L["PA_ID_NR"]), r.text(L["PA_GESLAG"]),
                        r.text(L["PA_TAAL"]), r.text(L["PA_PERSAL"]), r.text(L["PA_DPT_NR"]),
                        lurits_of(r.text(L["PA_ID_NR"])),
                        wc ? cemis_of(post) : number_of(r, "PA_REQV").trimmed()});
    }
    if (kies_volgorde == StaffOrder::Alphabetic)
        sort_rows_on(rows, 1);
    fill_rows(grid, std::move(rows));
    return grid;
}

PrintGrid StaffLists::address_list_grid() {
    PrintGrid grid;
    grid.set_format_string(
        s_.afrikaans ? QStringLiteral("<POS|<NAAM/ID.NR/PERSAL|<HUISADRES|<TELEFOON NRS")
                     : QStringLiteral("<PST|<NAME/ID.NO/PERSAL|<HOME ADDRESS|<TELEPHONE NO'S"));
    std::vector<QStringList> rows;
    for (int number : selected_records()) {
        const Record& r = read_selected(number);
        const QStringList who{list_name(r), tr("ID-NR", "ID NO") + u' ' + trimmed(r, "PA_ID_NR"),
                              QStringLiteral("PERSAL ") + trimmed(r, "PA_PERSAL"),
                              QStringLiteral("SACE ") + trimmed(r, "PA_DPT_NR")};
        QStringList home;
        for (const char* f : {"PA_H_ADR1", "PA_H_ADR2", "PA_H_ADR3", "PA_H_KODE"}) {
            const QString line = trimmed(r, f);
            if (!line.isEmpty())
                home << line;
        }
        QStringList phones;
        const std::pair<QString, const char*> signs[] = {
            {QStringLiteral("H "), "PA_T_HUIS"},
            {QStringLiteral("W "), "PA_T_WERK"},
            {tr("S ", "C "), "PA_T_SEL"},
            {tr("A ", "O "), "PA_T_ANDER"},
        };
        for (const auto& [sign, f] : signs) {
            const QString number_text = trimmed(r, f);
            if (!number_text.isEmpty())
                phones << sign + number_text;
        }
        rows.push_back({trimmed(r, "PA_POS_NR"), lines(who), lines(home), lines(phones)});
    }
    if (kies_volgorde == StaffOrder::Alphabetic)
        sort_rows_on(rows, 1);
    fill_rows(grid, std::move(rows));
    return grid;
}

PrintGrid StaffLists::birthday_list_grid() {
    PrintGrid grid;
    grid.set_format_string(s_.afrikaans ? QStringLiteral("^DATUM|<POSNR|<NAAM|^VERJAARDAG")
                                        : QStringLiteral("^DATE|<POST|<NAME|^BIRTH DATE"));
    std::vector<std::pair<QDate, QStringList>> found;
    for (int number : selected_records()) {
        const Record& r = read_selected(number);
        const std::optional<QDate> birth = r.date(L["PA_G_DATUM"]);
        if (!birth)
            continue;
        const QDate day = birthday_in(*birth, jr_data[1], jr_data[2]);
        if (!day.isValid())
            continue;
        found.push_back({day,
                         {shell::date_to_text(day), trimmed(r, "PA_POS_NR"), list_name(r),
                          shell::date_to_text(*birth)}});
    }
    if (kies_volgorde == StaffOrder::Alphabetic)
        std::stable_sort(found.begin(), found.end(),
                         [](const auto& a, const auto& b) { return a.second[2] < b.second[2]; });
    std::stable_sort(found.begin(), found.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });
    std::vector<QStringList> rows;
    for (auto& f : found)
        rows.push_back(f.second);
    fill_rows(grid, std::move(rows));
    return grid;
}

PrintGrid StaffLists::age_list_grid() {
    PrintGrid grid;
    grid.set_format_string(
        s_.afrikaans ? QStringLiteral("<POSNR|<VAN & VOLLE NAME|>ID-NOMMER|>JJ:MM|<RAS|^G")
                     : QStringLiteral("<POST|<SURNAME & FULL NAMES|>ID NUMBER|>YY:MM|<RACE|^G"));
    const QDate today = s_.today();
    std::vector<QStringList> rows;
    for (int number : selected_records()) {
        const Record& r = read_selected(number);
        const std::optional<QDate> birth = r.date(L["PA_G_DATUM"]);
        rows.push_back({trimmed(r, "PA_POS_NR"),
                        trimmed(r, "PA_VAN") + u' ' + trimmed(r, "PA_NAME"), trimmed(r, "PA_ID_NR"),
                        birth ? age_text(*birth, today) : QString(), trimmed(r, "PA_RAS"),
                        trimmed(r, "PA_GESLAG")});
    }
    if (kies_volgorde == StaffOrder::Alphabetic)
        sort_rows_on(rows, 1);
    fill_rows(grid, std::move(rows));
    return grid;
}

PrintGrid StaffLists::staff_details_grid(int number) {
    PrintGrid grid(0, 2);
    grid.column(0).alignment = kAlignLeft;
    grid.column(1).alignment = kAlignLeft;
    s_.read_record(Code::PRSALG, number);
    const Record r = s_.working(Code::PRSALG);
    const bool af = s_.afrikaans;

    std::vector<QStringList> rows;
    std::vector<int> headings;  // rows printed bold
    auto row = [&](const char* label_af, const char* label_en, const QString& value) {
        rows.push_back({S(af ? label_af : label_en), value});
    };
    auto heading = [&](const char* label_af, const char* label_en) {
        headings.push_back(int(rows.size()));
        rows.push_back({S(af ? label_af : label_en), QString()});
    };
    auto yes_no = [](const QString& v) {
        const QString t = v.trimmed().toUpper();
        if (t == u"J" || t == u"Y" || t == u"JA" || t == u"YES")
            return QStringLiteral("JA");
        if (t == u"N" || t == u"NEE" || t == u"NO")
            return QStringLiteral("NEE");
        return v.trimmed();
    };

    if (sections[kSectionGeneral]) {
        const QString gender = trimmed(r, "PA_GESLAG").toUpper();
        const QString gender_text = gender == u"M"                     ? tr("MANLIK", "MALE")
                                    : gender == u"V" || gender == u"F" ? tr("VROULIK", "FEMALE")
                                                                       : gender;
        row("POSNOMMER", "POST NUMBER", trimmed(r, "PA_POS_NR"));
        row("VAN", "SURNAME", trimmed(r, "PA_VAN"));
        row("VOLLE NAME", "FULL NAMES", trimmed(r, "PA_NAME"));
        row("TITEL", "TITLE", trimmed(r, "PA_TITEL"));
        row("NOOIENSVAN", "MAIDEN NAME", trimmed(r, "PA_N_VAN"));
        row("ID-NOMMER", "ID NUMBER", trimmed(r, "PA_ID_NR"));
        row("GEBOORTEDATUM", "BIRTH DATE", date_of(r, "PA_G_DATUM"));
        row("GESLAG", "GENDER", gender_text);
        row("BEVOLKINGSGROEP", "POPULATION GROUP", trimmed(r, "PA_RAS"));
        row("HUWELIKSTATUS", "MARITAL STATUS", trimmed(r, "PA_HWLK_ST"));
        row("BROODWINNER", "BREAD WINNER", yes_no(r.text(L["PA_BRD_WNR"])));
        row("GEBREK", "DISABILITY", trimmed(r, "PA_GEBREK"));
        row("TAALVERMOë", "LANGUAGE ABILITY", trimmed(r, "PA_TAALSMB"));
        row("PERSAL-NOMMER", "PERSAL NUMBER", trimmed(r, "PA_PERSAL"));
        row("AANSTELLINGSNOMMER", "APPOINTMENT NUMBER", trimmed(r, "PA_FOR_NR"));
        row("SACE-NOMMER", "SACE NUMBER", trimmed(r, "PA_DPT_NR"));
        row("TIPE AANSTELLING", "APPOINTMENT TYPE", trimmed(r, "PA_P_T"));
        row("UNIENAAM", "UNION NAME", trimmed(r, "PA_UN_NAAM"));
        row("REKENAARVAARDIGHEID", "COMPUTER LITERACY", number_of(r, "PA_ICT_LV"));
        row("'REQV'", "REQV", number_of(r, "PA_REQV"));
        row("EGGENOOT", "SPOUSE", trimmed(r, "PA_MAN_VR"));
    }
    if (sections[kSectionAddress]) {
        row("TELEFOON : HUIS", "TELEPHONE : HOME", trimmed(r, "PA_T_HUIS"));
        row("TELEFOON : WERK", "TELEPHONE : WORK", trimmed(r, "PA_T_WERK"));
        row("TELEFOON : SEL", "TELEPHONE : CELL", trimmed(r, "PA_T_SEL"));
        row("TELEFOON : ANDER", "TELEPHONE : OTHER", trimmed(r, "PA_T_ANDER"));
        row("EPOS-ADRES", "EMAIL ADDRESS", trimmed(r, "PA_EPOS"));
        row("MED.FONDS - NAAM", "MED.AID - NAME", trimmed(r, "PM_FONDS"));
        row("MED.FONDS - NR", "MED.AID - NO", trimmed(r, "PM_F_NR"));
        row("MED.FONDS - HOOFLID", "MED.AID - MEMBER", trimmed(r, "PM_F_LID"));
        row("MED.FONDS - LID ID", "MED.AID - MEMBER ID", trimmed(r, "PM_F_ID"));
        row("KONTAKPERSOON", "CONTACT PERSON", trimmed(r, "PM_F_KNM"));
        row("KONTAKNOMMER", "CONTACT NUMBER", trimmed(r, "PM_F_KNR"));
        const store::Field& kids = L["PL_KIND"];
        for (int i = 1; i < kids.count; ++i) {
            const QString child = r.text(kids, i).trimmed();
            if (child.isEmpty())
                continue;
            row("KIND, IDENTIFIKASIE", "CHILD, IDENTIFICATION", child);
            row("KIND, GEBOORTEDATUM", "CHILD, BIRTH DATE", date_of(r, "PL_GDTM", i));
        }
        const char* postal[] = {"PA_P_ADR1", "PA_P_ADR2", "PA_P_ADR3", "PA_P_KODE"};
        const char* home[] = {"PA_H_ADR1", "PA_H_ADR2", "PA_H_ADR3", "PA_H_KODE"};
        for (int i = 0; i < 4; ++i)
            rows.push_back(
                {i == 0 ? tr("POSADRES", "POSTAL ADDRESS") : QString(), trimmed(r, postal[i])});
        for (int i = 0; i < 4; ++i)
            rows.push_back(
                {i == 0 ? tr("HUISADRES", "HOME ADDRESS") : QString(), trimmed(r, home[i])});
        row("HUISTAAL", "HOME LANGUAGE", trimmed(r, "PA_H_TAAL"));
        row("KERKVERBAND", "RELIGION", trimmed(r, "PA_KERK"));
    }
    if (sections[kSectionBanking]) {
        row("BANKNAAM", "BANK NAME", trimmed(r, "PB_BNK_NM"));
        row("TAKNOMMER", "BRANCH NUMBER", trimmed(r, "PB_BNK_NR"));
        row("TELEFOONNOMMER", "TELEPHONE NUMBER", trimmed(r, "PB_TEL_NR"));
        row("FAKSNOMMER", "FAX NUMBER", trimmed(r, "PB_FAX_NR"));
        row("TIPE REKENING", "ACCOUNT TYPE", trimmed(r, "PB_REK_TPE"));
        row("REKENINGNOMMER", "ACCOUNT NUMBER", trimmed(r, "PB_REK_NR"));
        row("REKENINGHOUER", "ACCOUNT HOLDER", trimmed(r, "PB_REK_HR"));
        row("BELASTINGNOMMER", "TAX NUMBER", trimmed(r, "PB_TAX_NR"));
    }
    if (sections[kSectionQualifications]) {
        heading("KWALIFIKASIES", "QUALIFICATIONS");
        const store::Field& kind = L["PK_GRDE"];
        for (int i = 1; i < kind.count; ++i) {
            const QString q = r.text(kind, i).trimmed();
            if (q.isEmpty())
                continue;
            const int year = r.int16(L["PK_JAAR"], i);
            row("KWALIFIKASIE", "QUALIFICATION", q);
            row("INSTANSIE/JAAR", "INSTITUTION/YEAR",
                trimmed(r, "PK_WAAR", i) +
                    (year > 0 ? QStringLiteral(" / ") + QString::number(year) : QString()));
            const QString subject = trimmed(r, "PK_SHA_V", i);
            const QString type = trimmed(r, "PK_SHA_T", i);
            row("VAK, (S)PES/(H)OOF/(A)NDER", "VAK, (S)PES/(H)OOF/(A)NDER",
                type.isEmpty() ? subject : subject + QStringLiteral(", ") + type);
        }
    }
    if (sections[kSectionAppointments]) {
        heading("AANSTELLINGS", "APPOINTMENTS");
        row("1ste AANSTELLINGSDATUM", "1st APPOINTMENT DATE", date_of(r, "PA_DTM_AAN"));
        row("AANSTELLINGSDATUM DIE SKOOL", "APPOINTMENT DATE THIS SCHOOL",
            date_of(r, "PA_DTM_SKL"));
        const store::Field& where = L["PA_WAAR"];
        for (int i = 1; i < where.count; ++i) {
            const QString w = r.text(where, i).trimmed();
            if (w.isEmpty())
                continue;
            row("INSTANSIE", "INSTITUTION", w);
            row("POSBESKRYWING", "POST DESCRIPTION", trimmed(r, "PA_BSK", i));
            const QString type = trimmed(r, "PA_TPA", i);
            const QString when = date_of(r, "PA_DTM", i);
            row("TIPE AANSTELLING/DATUM", "APPOINTMENT TYPE/DATE",
                when.isEmpty() ? type : type + QStringLiteral(" / ") + when);
        }
    }
    if (sections[kSectionExperience]) {
        heading("ONDERVINDING", "EXPERIENCE");
        row("JARE : DIE SKOOL", "YEARS : THIS SCHOOL", number_of(r, "PO_JRE_SKL"));
        row("JARE : DIE PROVINSIE", "YEARS : THIS PROVINCE", number_of(r, "PO_JRE_PRV"));
        row("JARE : BUITE ONDERWYS", "YEARS : OUTSIDE EDUCATION", number_of(r, "PO_JRE_BTE"));
        row("JARE : IN ONDERWYS", "YEARS : IN EDUCATION", number_of(r, "PO_JRE_OND"));
        row("JARE : DEPARTEMENTSHOOF", "YEARS : DEPARTMENTAL HEAD", number_of(r, "PO_JRE_DPT"));
        row("JARE : ADJUNKHOOF", "YEARS : DEPUTY", number_of(r, "PO_JRE_A_H"));
        row("JARE : SNR ADJUNKHOOF", "YEARS : SNR DEPUTY", number_of(r, "PO_JRE_SAH"));
        row("JARE : HOOF", "YEARS : PRINCIPAL", number_of(r, "PO_JRE_HF"));
        // Each list: the label against its first line only.
        auto list = [&](const char* label_af, const char* label_en, const QStringList& items) {
            for (int i = 0; i < items.size(); ++i)
                rows.push_back({i == 0 ? S(af ? label_af : label_en) : QString(), items.at(i)});
        };
        QStringList schools, subjects, extra_mural, outside;
        for (int i = 1; i < L["PO_SKL"].count; ++i) {
            const QString school = trimmed(r, "PO_SKL", i);
            if (school.isEmpty())
                continue;
            schools << school + QStringLiteral(" : ") + date_of(r, "PO_VAN", i) +
                           QStringLiteral(" - ") + date_of(r, "PO_TOT", i) + QStringLiteral(" (") +
                           number_of(r, "PO_OND", i) + u')';
        }
        for (int i = 1; i < L["PO_VAK"].count; ++i) {
            const QString subject = trimmed(r, "PO_VAK", i);
            if (subject.isEmpty())
                continue;
            subjects << subject + QStringLiteral(" : ") + trimmed(r, "PO_GRD", i) +
                            QStringLiteral(" (") + number_of(r, "PO_VJR", i) + u')';
        }
        for (int i = 1; i < L["PO_AKT"].count; ++i) {
            const QString what = trimmed(r, "PO_AKT", i);
            if (what.isEmpty())
                continue;
            extra_mural << what + QStringLiteral(" : ") + trimmed(r, "PO_SPN", i) +
                               QStringLiteral(" (") + number_of(r, "PO_BJR", i) + u')';
        }
        for (int i = 1; i < L["PO_PLK"].count; ++i) {
            const QString where = trimmed(r, "PO_PLK", i);
            if (where.isEmpty())
                continue;
            outside << where + QStringLiteral(" : ") + trimmed(r, "PO_POS", i) +
                           QStringLiteral(" (") + number_of(r, "PO_PJR", i) + u')';
        }
        list("VORIGE SKOLE", "PREVIOUS SCHOOLS", schools);
        list("VAKONDERVINDING", "SUBJECT EXPERIENCE", subjects);
        list("BUITEMUURS", "EXTRA-MURAL", extra_mural);
        list("BUITE-ONDERRIG", "EXTRA-CURRICULAR", outside);
    }

    fill_rows(grid, std::move(rows));
    for (int h : headings)
        grid.cell(h, 0).bold = true;
    return grid;
}

// ---- printing ---------------------------------------------------------------------------------

bool StaffLists::print_staff_list() {
    if (!start(tr("PERSONEELLYS : ", "STAFF LIST : ")))
        return false;
    PrintGrid grid = staff_list_grid();
    print_pages(grid, list_title(job_.state.report_name));
    job_.finish_report();
    return true;
}

bool StaffLists::print_address_list() {
    if (!start(tr("ADRES & TELEFOONLYS : ", "ADDRESS & TELEPHONE LIST : ")))
        return false;
    PrintGrid grid = address_list_grid();
    print_pages(grid, list_title(job_.state.report_name));
    job_.finish_report();
    return true;
}

bool StaffLists::print_birthday_list() {
    if (!start(tr("VERJAARDAGLYS : ", "BIRTHDAY LIST : ")))
        return false;
    PrintGrid grid = birthday_list_grid();
    print_pages(
        grid, list_title(job_.state.report_name),
        shell::date_to_text(jr_data[1]) + QStringLiteral(" - ") + shell::date_to_text(jr_data[2]));
    job_.finish_report();
    return true;
}

bool StaffLists::print_age_list() {
    if (!start(tr("OUDERDOMSLYS : ", "AGE LIST : ")))
        return false;
    PrintGrid grid = age_list_grid();
    print_pages(grid, list_title(job_.state.report_name));
    job_.finish_report();
    return true;
}

bool StaffLists::print_staff_details() {
    if (!start(tr("PERSONEELBESONDERHEDE : ", "STAFF DETAILS : ")))
        return false;
    std::vector<int> records = selected_records();
    if (kies_volgorde == StaffOrder::Alphabetic) {
        // Sorted on the name, as the other lists are.
        std::vector<std::pair<QString, int>> named;
        for (int number : records) {
            s_.read_record(Code::PRSALG, number);
            named.push_back({list_name(s_.working(Code::PRSALG)), number});
        }
        std::stable_sort(named.begin(), named.end(),
                         [](const auto& a, const auto& b) { return a.first < b.first; });
        std::vector<int> sorted;
        for (const auto& n : named)
            sorted.push_back(n.second);
        records = sorted;
    }
    if (records.empty()) {
        PrintGrid empty(0, 2);
        print_pages(empty, list_title(job_.state.report_name));
    }
    for (int number : records) {
        PrintGrid grid = staff_details_grid(number);
        s_.read_record(Code::PRSALG, number);
        const QString post = s_.working(Code::PRSALG).text(L["PA_POS_NR"]).trimmed();
        // The header of the next person begins a page of its own.
        print_pages(grid, job_.state.report_name + post);
    }
    job_.finish_report();
    return true;
}

}  // namespace korvel::reports
