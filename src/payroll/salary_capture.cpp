// sk461_prg: the salary capture.
#include "payroll/salary_capture.h"

#include <QLocale>
#include <QRegularExpression>

#include "shell/helpers.h"
#include "shell/session.h"

namespace korvel::payroll {

using store::Code;
using store::Field;
using store::PRSLNE;

namespace {

// The fields behind the fixed boxes 1 to 3 of each side.
const Field* earnings_field(int i) {
    static const Field* const f[] = {&PRSLNE["PL_SALARIS"], &PRSLNE["PL_OORTYD"],
                                     &PRSLNE["PL_BONUS"]};
    return f[i - 1];
}
const Field* deductions_field(int i) {
    static const Field* const f[] = {&PRSLNE["PL_PENS"], &PRSLNE["PL_WVF"], &PRSLNE["PL_TAX"]};
    return f[i - 1];
}

double box_value(const QString& text) {
    return shell::leading_number(QString(text).remove(u','));
}

}  // namespace

QString SalaryCapture::box_amount(const QString& text) {
    return QLocale::c().toString(box_value(text), 'f', 2);
}

SalaryCapture::SalaryCapture(shell::Session& session) : s_(session) {}

void SalaryCapture::form_load() {
    caption = s_.tr("SALARISSE/LONE", "SALARIES/WAGES");
    grid_format = s_.tr("|<VERW||<VAN|<VOLLE NAME|<TITEL|<DATUM",
                        "|<REF.||<SURNAME|<FULL NAMES|<TITLE|<DATE");
    data_teks = {s_.tr("BEROEP", "OCCUPATION"), s_.tr("PERSONEELLID", "STAFF MEMBER"), QString(),
                 s_.tr("AANSTELLINGSDATUM", "APPOINTMENT DATE"),
                 s_.tr("BETAALDATUM", "PAYMENT DATE")};
    ink_teks = {QString(), s_.tr("SALARIS/LOON", "SALARY/WAGE"), s_.tr("OORTYD", "OVERTIME"),
                QStringLiteral("BONUS")};
    uit_teks = {QString(), s_.tr("PENSIOEN", "PENSION"), s_.tr("WVF", "UIF"),
                s_.tr("BELASTING", "TAX")};
    data_ok_caption = s_.tr("Bevestig veranderings", "Confirm changes");
    search_caption =
        s_.tr("SOEK : Soek volgens VAN/NAAM", "SEARCH : Search according to SURNAME/NAMES");
    print_caption = s_.tr("DRUK : Wys Drukprogramme", "PRINT : Show Print programs");
    maand_lys.clear();
    for (int m = 1; m <= 12; ++m)
        maand_lys << shell::month_name(m, s_.afrikaans);
    s_.open_staff_file(QStringLiteral("PRSLNE"));
    prs_grid = payroll_staff(s_);
    closed = false;
}

void SalaryCapture::prs_grid_dbl_click(int row) {
    if (row < 0 || row >= int(prs_grid.size()))
        return;
    const PayrollPerson& p = prs_grid[size_t(row)];
    current_row = row;
    prs_data.fill(QString());
    prs_data[1] = p.post;
    prs_data[2] = QStringList({p.title, shell::initials(p.names), p.surname})
                      .filter(QRegularExpression(QStringLiteral("\\S")))
                      .join(u' ');
    prs_data[3] = p.appointed;
    month = 0;
    data_raam_visible = true;
    maand_lys_visible = true;
}

void SalaryCapture::maand_lys_dbl_click(int index) {
    if (index < 0 || index >= 12 || !data_raam_visible)
        return;
    month = index + 1;
    prs_data[4] = maand_lys.at(index);
    maand_lys_visible = false;
    load_month();
}

void SalaryCapture::load_month() {
    for (int i = 1; i <= 6; ++i) {
        ink_data[size_t(i)].clear();
        uit_data[size_t(i)].clear();
    }
    for (int i = 1; i <= 3; ++i) {
        const QString other = s_.tr("ANDER ", "OTHER ") + QString::number(i);
        ink_var_teks[size_t(i)] = other;
        uit_var_teks[size_t(i)] = other;
    }
    const PayBook book = read_pay_book(s_);
    if (const std::optional<PayMonth> m = book.find(prs_data[1], month)) {
        prs_data[0] = m->occupation;
        const int fixed_in[] = {m->salary, m->overtime, m->bonus};
        const int fixed_out[] = {m->pension, m->uif, m->tax};
        for (int i = 1; i <= 3; ++i) {
            ink_data[size_t(i)] = box_amount(QString::number(fixed_in[i - 1]));
            uit_data[size_t(i)] = box_amount(QString::number(fixed_out[i - 1]));
            // A zero line keeps its default label.
            const PayLine& e = m->earnings_free[size_t(i - 1)];
            if (e.amount != 0) {
                ink_var_teks[size_t(i)] = e.text;
                ink_data[size_t(i + 3)] = box_amount(QString::number(e.amount));
            }
            const PayLine& d = m->deductions_free[size_t(i - 1)];
            if (d.amount != 0) {
                uit_var_teks[size_t(i)] = d.text;
                uit_data[size_t(i + 3)] = box_amount(QString::number(d.amount));
            }
        }
    }
    totals();
}

void SalaryCapture::amount_changed(int side, int index) {
    if (index < 1 || index > 6)
        return;
    QString& box = side == 1 ? ink_data[size_t(index)] : uit_data[size_t(index)];
    box = box_amount(box);
    totals();
}

void SalaryCapture::totals() {
    double in = 0, out = 0;
    for (int i = 1; i <= 6; ++i) {
        in += box_value(ink_data[size_t(i)]);
        out += box_value(uit_data[size_t(i)]);
    }
    ink_totaal = QLocale::c().toString(in, 'f', 2);
    uit_totaal = QLocale::c().toString(out, 'f', 2);
    QLocale grouped = QLocale::c();
    grouped.setNumberOptions(QLocale::DefaultNumberOptions);
    salaris_totaal = grouped.toString(in - out, 'f', 2);
}

void SalaryCapture::data_ok_click() {
    if (month == 0 || s_.browse_mode || !data_raam_visible)
        return;
    // Every amount is converted before anything is stored: one out of range stops the save
    // and nothing is written.
    std::array<long long, 7> in{}, out{};
    for (int i = 1; i <= 6; ++i) {
        in[size_t(i)] = shell::whole_rands(ink_data[size_t(i)]);
        out[size_t(i)] = shell::whole_rands(uit_data[size_t(i)]);
        for (const auto& [value, label] :
             {std::pair{in[size_t(i)], i <= 3 ? ink_teks[size_t(i)] : ink_var_teks[size_t(i - 3)]},
              std::pair{out[size_t(i)],
                        i <= 3 ? uit_teks[size_t(i)] : uit_var_teks[size_t(i - 3)]}}) {
            if (value < -32768 || value > 32767) {
                s_.dialogs().message(label + QStringLiteral(" : ") +
                                         shell::amount_range_message(value, s_.afrikaans),
                                     ui::Icon::Exclamation);
                return;
            }
        }
    }

    // The record of the person and month; with none, a new record at the end that starts as
    // the buffer holds the last record read, so its zero free lines inherit that record's.
    static const Field& kPost = PRSLNE["PL_POS_NR"];
    static const Field& kMonth = PRSLNE["PL_MAAND"];
    const QString post = prs_data[1].trimmed();
    int found = 0;
    store::Record match(PRSLNE);
    s_.scan_records(Code::PRSLNE, [&](int number, store::Record& r) {
        if (found == 0 && r.text(kPost).trimmed() == post && r.int16(kMonth) == month) {
            found = number;
            match = r;
        }
    });
    store::Record& buffer = s_.working(Code::PRSLNE);
    int number = found;
    if (found != 0) {
        buffer = match;
    } else {
        number = s_.count(Code::PRSLNE) + 1;
        buffer.set_text(kPost, post);
        buffer.set_int16(kMonth, month);
    }
    buffer.set_text(PRSLNE["POS_BSK"], prs_data[0]);
    static const Field& kEarnText = PRSLNE["pl_i_teks"];
    static const Field& kEarn = PRSLNE["PL_I_BDRG"];
    static const Field& kDedText = PRSLNE["pl_u_teks"];
    static const Field& kDed = PRSLNE["pl_u_bdrg"];
    for (int i = 1; i <= 3; ++i) {
        buffer.set_int16(*earnings_field(i), in[size_t(i)]);
        buffer.set_int16(*deductions_field(i), out[size_t(i)]);
    }
    // A zero free line is not written: the field keeps what the buffer held.
    for (int i = 1; i <= 3; ++i) {
        if (in[size_t(i + 3)] != 0) {
            buffer.set_text(kEarnText, ink_var_teks[size_t(i)], i);
            buffer.set_int16(kEarn, in[size_t(i + 3)], i);
        }
        if (out[size_t(i + 3)] != 0) {
            buffer.set_text(kDedText, uit_var_teks[size_t(i)], i);
            buffer.set_int16(kDed, out[size_t(i + 3)], i);
        }
    }
    if (!s_.write_record(Code::PRSLNE, number))
        return;
    s_.state(Code::PRSLNE).current = number;
    data_raam_visible = false;
    maand_lys_visible = false;
}

void SalaryCapture::print_click() {
    if (s_.browse_mode) {
        s_.dialogs().message(
            s_.tr("NIE BESKIKBAAR IN KYKPROGRAM NIE ...", "NOT AVAILABLE IN BROWSE PROGRAM ..."),
            ui::Icon::Exclamation);
        return;
    }
    if (open_print_chooser)
        open_print_chooser();
}

void SalaryCapture::staff_exit_click() {
    s_.close_file(Code::PRSLNE);
    closed = true;
}

}  // namespace korvel::payroll
