// sk425_opsies, sk425_prg
#include "attendance/mark_sheet.h"

#include <string_view>

#include "attendance/attendance_reports.h"
#include "platform/winpath.h"
#include "reports/grid_output.h"
#include "reports/letterhead.h"
#include "reports/letterhead_forms.h"
#include "reports/print_target.h"
#include "shell/helpers.h"
#include "shell/session.h"
#include "store/quoted_text.h"

namespace korvel::attendance {

using reports::PrintGrid;
using store::Code;

namespace {
const auto& A = store::PRSALG;

// The boxes written to the options file, in the file's order.
constexpr std::array<int, 6> kSavedBoxes = {kFromDateBox,     kToDateBox,
                                            kFirstContactBox, kFirstContactBox + 1,
                                            kFirstCommentBox, kFirstCommentBox + 1};

constexpr int kStatementColumns = 7;
constexpr int kRightHalf = 4;  // the first column of the right half

// The absence types a statement knows, by the stored letter. Afrikaans has no "s": a day
// signed out in English gets no type text on an Afrikaans statement.
struct AbsenceType {
    char letter;
    const char* text;
};
constexpr AbsenceType kTypesAf[] = {
    {'a', "AFWESIG"}, {'2', "AFWESIG (HEELDAG)"}, {'l', "LAAT"}, {'u', "UITGETEKEN"}};
constexpr AbsenceType kTypesEn[] = {
    {'a', "ABSENT"}, {'2', "ABSENT (WHOLE DAY)"}, {'l', "LATE"}, {'s', "SIGNED OUT"}};

// The letters a statement lists, compared as stored: on leave ("o", "v") is not among them.
constexpr std::string_view kListedLetters = "a2lus";

QString type_text(char letter, bool afrikaans) {
    for (const AbsenceType& t : afrikaans ? kTypesAf : kTypesEn) {
        if (t.letter == letter) {
            return QString::fromLatin1(t.text);
        }
    }
    return {};
}

// The words of a text in lines of at most `width` characters; a longer word is cut.
QStringList wrapped(const QString& text, int width) {
    QStringList lines;
    QString line;
    for (QString word : text.simplified().split(u' ', Qt::SkipEmptyParts)) {
        while (word.size() > width) {
            if (!line.isEmpty()) {
                lines << line;
                line.clear();
            }
            lines << word.left(width);
            word = word.mid(width);
        }
        if (!line.isEmpty() && line.size() + 1 + word.size() > width) {
            lines << line;
            line.clear();
        }
        line += (line.isEmpty() ? QString() : QStringLiteral(" ")) + word;
    }
    if (!line.isEmpty()) {
        lines << line;
    }
    return lines;
}

// The program's language comes back when a statement in the person's language is done,
// whichever way the print leaves.
class LanguageKeeper {
  public:
    LanguageKeeper(shell::Session& s, reports::PrintJob& job)
        : s_(s), job_(job), session_(s.afrikaans), job_language_(job.afrikaans) {}
    ~LanguageKeeper() {
        s_.afrikaans = session_;
        job_.afrikaans = job_language_;
    }
    void use(bool afrikaans) { s_.afrikaans = job_.afrikaans = afrikaans; }

  private:
    shell::Session& s_;
    reports::PrintJob& job_;
    bool session_, job_language_;
};
}  // namespace

// ---- sk425_opsies ----

MarkSheetOptions::MarkSheetOptions(shell::Session& session) : s_(session) {}

QString MarkSheetOptions::file_path() const {
    return winpath::join(s_.folders.staff, kMarkSheetOptionsFile);
}

void MarkSheetOptions::form_load() {
    caption = s_.tr("BYWONING OPSIES", "ATTENDANCE OPTIONS");
    tipe_caption = s_.tr("TIPE AFWESIGHEID", "TYPE OF ATTENDANCE");
    tipe_lys = {s_.tr("AFWESIG", "ABSENT"), s_.tr("LAAT", "LATE"),
                s_.tr("UITGETEKEN", "SIGNED OUT")};
    briefhoof_caption = s_.tr("BRIEFHOOF", "LETTERHEAD");
    datums_caption = s_.tr("TUSSEN DATUMS", "BETWEEN DATES");
    dae_caption = s_.tr("TUSSEN DAE", "BETWEEN DAYS");
    kontak_caption = s_.tr("KONTAKINLIGTING", "CONTACT INFORMATION");
    kommentaar_caption = s_.tr("KOMMENTAAR", "COMMENTS");
    manlik_caption = s_.tr("MANLIK", "MALE");
    vroulik_caption = s_.tr("VROULIK", "FEMALE");
    for (int i : {kFromDateBox, kToDateBox}) {
        ps_tooltip[size_t(i)] =
            s_.tr(" Druk slegs bywoning wat tussen die twee datums val ",
                  " Print only absenteeisms that fall between these two dates ");
    }
    for (int i : {6, 7}) {
        ps_tooltip[size_t(i)] =
            s_.tr(" Druk slegs leerders waarvan totale aantal dae tussen die twee grense val ",
                  " Print learners only with total days between these two boundaries ");
    }
    ps_data.fill(QString());
    ps_data[kLetterheadBox] = s_.letterhead;
    // What the last confirm kept; a value the file lacks is blank, and a date box without a
    // date takes its default below.
    if (s_.fs().file_exists(file_path())) {
        if (const auto bytes = s_.fs().read_all(file_path())) {
            quoted::Reader reader(*bytes);
            for (int box : kSavedBoxes) {
                ps_data[size_t(box)] =
                    reader.read_string().value_or(QString()).left(kOptionTextLimit);
            }
        }
    }
    if (!shell::text_to_date(ps_data[kFromDateBox], QDate()).isValid()) {
        ps_data[kFromDateBox] = shell::date_to_text(s_.today().addMonths(-1));
    }
    if (!shell::text_to_date(ps_data[kToDateBox], QDate()).isValid()) {
        ps_data[kToDateBox] = shell::date_to_text(s_.today());
    }
    manlik = vroulik = true;
    confirmed = closed = false;
}

QDate MarkSheetOptions::from_date() const {
    return shell::text_to_date(ps_data[kFromDateBox], s_.today().addMonths(-1));
}

QDate MarkSheetOptions::to_date() const {
    return shell::text_to_date(ps_data[kToDateBox], s_.today());
}

void MarkSheetOptions::ps_data_click(int index) {
    if (index == kLetterheadBox) {
        reports::LetterheadChooser chooser(s_);
        chooser.form_load();
        if (!chooser.closed) {
            s_.dialogs().show_modal(chooser);
        }
        ps_data[kLetterheadBox] = s_.letterhead;
    } else if (index == kFromDateBox || index == kToDateBox) {
        const QDate start = index == kFromDateBox ? from_date() : to_date();
        if (const auto picked = s_.dialogs().pick_date(datums_caption, start)) {
            ps_data[size_t(index)] = shell::date_to_text(*picked);
        }
    }
}

void MarkSheetOptions::data_ok_click() {
    quoted::Writer w;
    for (int box : kSavedBoxes) {
        w.text(ps_data[size_t(box)].left(kOptionTextLimit));
    }
    w.end_line();
    if (!s_.fs().write_all(file_path(), w.bytes())) {
        s_.dialogs().message(
            s_.tr("Die opsies kon nie gestoor word nie : ", "The options could not be saved : ") +
                file_path(),
            ui::Icon::Critical);
    }
    confirmed = true;
    closed = true;
}

// ---- sk425_prg ----

MarkSheet::MarkSheet(shell::Session& session, reports::PrintJob& job,
                     reports::PrintTargetHost* host)
    : range(session.dialogs(), session.afrikaans),
      opsies(session),
      s_(session),
      job_(job),
      host_(host) {}

void MarkSheet::form_load() {
    caption = s_.tr("SKOOLBYWONINGPUNTESTAAT", "ATTENDANCE MARKSHEET");
    grid_format = s_.tr("|<POS|<NAAM", "|<POST|<NAME");
    pos_teks = {QString(), s_.tr("Van POS/NAAM", "From POST/NAME"),
                s_.tr("Tot POS/NAAM", "To   POST/NAME")};
    for (const char* code : {"PRSALG", "PRSAFW", "PRSSBI"}) {
        s_.open_staff_file(QString::fromLatin1(code));
    }
    std::vector<reports::StaffRangeRow> rows;
    for (const StaffMember& m :
         selected_staff(s_, AdminChoice::Included, kStaffPost | kStaffParts)) {
        rows.push_back({m.post, m.surname + u' ' + m.initials, m.record});
    }
    range.set_rows(std::move(rows));
    ListBox options;
    fill_reason_lists(s_, kode_lys, options);
    closed = false;
}

void MarkSheet::pos_data_key_press(int index, const QString& typed) {
    range.search(index == 2 ? reports::StaffRange::To : reports::StaffRange::From, typed);
}

void MarkSheet::data_ok_click() {
    opsies.form_load();
    s_.dialogs().show_modal(opsies);
    if (opsies.confirmed) {
        print_mark_sheets();
    }
}

bool MarkSheet::start() {
    job_.afrikaans = s_.afrikaans;
    job_.general_year_folder = s_.fs().native(s_.folders.general_year);
    job_.state.report_name = caption;
    if (choose_target) {
        return choose_target(job_);
    }
    return host_ != nullptr &&
           reports::ask_print_target(job_, *host_, s_.fs().native(s_.folders.workstation));
}

std::vector<MarkSheetDay> MarkSheet::absent_days(const QString& post, const QDate& from,
                                                 const QDate& to) {
    std::vector<MarkSheetDay> days;
    const int year = ledger_year_number(s_);
    const DayRange span = day_range(from, to, year);
    if (!book_) {
        s_.open_staff_file(QStringLiteral("PRSAFW"));
        book_ = std::make_unique<AttendanceBook>(s_);
        book_->load();
    }
    const int number = book_->find(post);
    if (number == 0 || span.empty()) {
        return days;
    }
    const store::Record& r = book_->record(number);
    const QDate jan1(year, 1, 1);
    for (int day = span.first; day <= span.last; ++day) {
        const char letter = stored_mark(r, day);
        if (letter != 0 && kListedLetters.find(letter) != std::string_view::npos) {
            days.push_back({jan1.addDays(day - 1), letter, stored_reason(r, day)});
        }
    }
    return days;
}

PrintGrid MarkSheet::statement_grid(const store::Record& person,
                                    const std::vector<MarkSheetDay>& days, bool af) {
    const auto tr = [af](const char* a, const char* e) { return QString::fromUtf8(af ? a : e); };
    PrintGrid g(0, kStatementColumns);
    reports::PrintDevice& d = job_.device();
    const double width = d.scale_x(d.scale_width(), d.scale_mode(), reports::ScaleMode::Twips);
    const double gap = 240;
    const double half = std::max(3000.0, (width - 600 - gap) / 2);
    const double date_width = 1300;
    const double type_width = (half - date_width) * 0.5;
    for (int side : {0, kRightHalf}) {
        g.column(side).width = date_width;
        g.column(side).alignment = reports::kAlignCentre;
        g.column(side + 1).width = type_width;
        g.column(side + 2).width = half - date_width - type_width;
    }
    g.column(3).width = gap;
    // A line of its own across the page; the headings centred.
    const auto line = [&](const QString& text, bool bold = false) {
        const int r = g.add_item(QString());
        for (int c = 0; c < kStatementColumns; ++c) {
            g.set_text(r, c, text);
            g.cell(r, c).bold = bold;
            g.cell(r, c).alignment = bold ? reports::kAlignCentre : reports::kAlignLeft;
        }
        g.row(r).merge = true;
        return r;
    };

    if (s_.letterhead.isEmpty()) {
        const int r = line(job_.school.name, true);
        for (int c = 0; c < kStatementColumns; ++c) {
            g.cell(r, c).font_size = 14;
        }
        g.row(r).height = 480;
    }
    line(tr("SKOOLBYWONINGSTAAT : ", "ATTENDANCE SHEET : ") +
             shell::date_to_text(opsies.from_date()) + QStringLiteral(" - ") +
             shell::date_to_text(opsies.to_date()),
         true);
    line(QString());
    const QString names = person.text(A["PA_NAME"]).trimmed();
    line(person.text(A["PA_VAN"]).trimmed() + QStringLiteral(", ") +
         person.text(A["PA_TITEL"]).trimmed() + u' ' + shell::initials(names) +
         QStringLiteral("  (") + person.text(A["PA_ID_NR"]).trimmed() + u')');
    line(QString());

    const int head = g.add_item(QString());
    const QStringList heads = tr("DATUM|TIPE AFWESIGHEID|REDE||DATUM|TIPE AFWESIGHEID|REDE",
                                 "DATE|TYPE OF ABSENTEEISM|REASON||DATE|TYPE OF ABSENTEEISM|REASON")
                                  .split(u'|');
    for (int c = 0; c < kStatementColumns; ++c) {
        g.set_text(head, c, heads.at(c));
        g.cell(head, c).bold = true;
    }
    // The first half, rounded up, down the left; the rest down the right.
    const int left_rows = int((days.size() + 1) / 2);
    const int first = g.rows();
    for (int i = 0; i < left_rows; ++i) {
        g.add_item(QString());
    }
    for (size_t i = 0; i < days.size(); ++i) {
        const MarkSheetDay& day = days[i];
        const int r = first + int(i) % std::max(1, left_rows);
        const int c = int(i) < left_rows ? 0 : kRightHalf;
        g.set_text(r, c, shell::date_to_text(day.date));
        g.set_text(r, c + 1, type_text(day.letter, af));
        if (day.reason >= 1 && day.reason <= int(kode_lys.items.size())) {
            g.set_text(r, c + 2, kode_lys.items[size_t(day.reason - 1)].text);
        }
    }
    line(QString());
    line(tr("TOTALE DAE", "TOTAL DAYS") + QStringLiteral(" : ") + QString::number(days.size()),
         true);
    line(QString());
    line(tr("KOMMENTAAR", "COMMENTS"), true);
    // The comments in lines of the page's width in characters of the grid's font.
    const int chars = std::max(20, int((width - 600) / 120));
    for (int box : {kFirstCommentBox, kFirstCommentBox + 1}) {
        for (const QString& l : wrapped(opsies.ps_data[size_t(box)], chars)) {
            line(l);
        }
    }
    line(QString());
    for (int box : {kFirstContactBox, kFirstContactBox + 1}) {
        if (!opsies.ps_data[size_t(box)].trimmed().isEmpty()) {
            line(opsies.ps_data[size_t(box)].trimmed());
        }
    }
    line(QString());
    line(QString());
    line(QStringLiteral("______________________________          ____________________"));
    line(tr("HANDTEKENING VAN HOOF", "SIGNATURE OF PRINCIPAL") + QStringLiteral("  ") +
         s_.school.principal + tr(" (HOOF)", " (PRINCIPAL)") + QStringLiteral("          ") +
         tr("DATUM", "DATE"));
    return g;
}

void MarkSheet::begin_page() {
    reports::PrintDevice& d = job_.device();
    if (!s_.letterhead.isEmpty()) {
        // The body starts a line below the letterhead.
        reports::print_letterhead(job_);
        d.set_current_y(d.current_y() + 1);
        return;
    }
    job_.state.page_pending = true;
    job_.print_page_header(QString(), {}, reports::kPortraitText, false, true);
    if (!job_.state.to_spreadsheet) {
        d.set_scale_mode(reports::ScaleMode::Characters);
        d.set_current_y(1);
    }
}

void MarkSheet::print_statement(PrintGrid& grid) {
    reports::GridPageOptions options;
    options.no_frame = true;
    options.no_rules = true;
    options.autofit = false;
    options.header_rows = 0;
    // A page holds at least one row, so the loop ends; the bound guards a grid that never
    // shrinks.
    for (int pages = 0; pages <= grid.rows(); ++pages) {
        begin_page();
        if (reports::print_grid_blocks(job_, grid, options)) {
            break;
        }
        job_.print_continuation_mark();
    }
    job_.print_page_footer();
}

bool MarkSheet::print_mark_sheets() {
    if (s_.count(Code::PRSALG) < 1 || !start()) {
        return false;
    }
    // A statement prints on the letterhead chosen, or under the school's name when none is.
    job_.state.letterhead = {};
    job_.state.letterhead.selected = s_.letterhead;
    book_.reset();  // read once for the run, as it stands now
    const QDate from = opsies.from_date();
    const QDate to = opsies.to_date();
    int printed = 0;
    for (int row : range.selected_rows()) {
        const reports::StaffRangeRow& item = range.rows()[size_t(row)];
        if (!s_.read_record(Code::PRSALG, item.record)) {
            continue;
        }
        const store::Record person = s_.working(Code::PRSALG);
        if (person.text(A["PA_AKTIEF"]).trimmed() == QStringLiteral("*")) {
            continue;
        }
        const QString gender = person.text(A["PA_GESLAG"]).trimmed().toUpper();
        if ((gender == QStringLiteral("M") && !opsies.manlik) ||
            ((gender == QStringLiteral("F") || gender == QStringLiteral("V")) && !opsies.vroulik)) {
            continue;
        }
        LanguageKeeper language(s_, job_);
        // 1 is Afrikaans; anything else, a LURITS letter too, reads as English.
        const bool af = shell::number_value(person.text(A["PA_TAAL"])) == 1;
        language.use(af);
        PrintGrid grid = statement_grid(person, absent_days(item.post, from, to), af);
        print_statement(grid);
        ++printed;
    }
    // Each statement closed its own page.
    job_.finish_report(false, false);
    return printed > 0;
}

}  // namespace korvel::attendance
