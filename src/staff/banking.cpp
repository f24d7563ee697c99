#include "staff/banking.h"

#include <QLocale>
#include <algorithm>
#include <cmath>

#include "shell/helpers.h"
#include "shell/staff_person.h"

namespace korvel::staff {

using shell::leading_number;
using shell::whole_rands;
using store::Code;
using store::FieldType;
using store::PRSALG;

namespace {

constexpr BankBox kBankBoxes[] = {
    {1, &PRSALG["PB_BNK_NM"], "BANKNAAM", "BANK NAME"},
    {2, &PRSALG["PB_BNK_NR"], "TAKNOMMER", "BRANCH NUMBER"},
    {3, &PRSALG["PB_TEL_NR"], "TELEFOONNOMMER", "TELEPHONE NUMBER"},
    {4, &PRSALG["PB_FAX_NR"], "FAKSNOMMER", "FAX NUMBER"},
    {5, &PRSALG["PB_KONTAK"], "KONTAKPERSOON", "CONTACT PERSON"},
    {6, &PRSALG["PB_REK_TPE"], "REKENINGTIPE", "ACCOUNT TYPE"},
    {7, &PRSALG["PB_REK_NR"], "REKENINGNOMMER", "ACCOUNT NUMBER"},
    {8, &PRSALG["PB_TAX_NR"], "BELASTINGNOMMER", "TAX NUMBER"},
    {9, &PRSALG["PB_KONTRAK"], "KONTRAK", "CONTRACT"},
    {10, &PRSALG["PB_SALARIS"], "SALARIS/LOON", "SALARY/WAGE"},
    {11, &PRSALG["PB_TAX_DED"], "BELASTING AF", "TAX DEDUCTABLE"},
    {12, &PRSALG["PB_TAX_AMT"], "BELASTING BEDRAG", "TAX AMOUNT"},
    {13, &PRSALG["PB_TJK_KON"], "BETAALTIPE", "PAYMENT TYPE"},
    {14, &PRSALG["PB_REK_HR"], "REKENINGHOUER", "ACCOUNT HOLDER"},
};

constexpr int kMaskWidth = 14;  // "###,###,###.00"
constexpr int kYesNoWidth = 3;  // "NEE", "YES"

// The list that serves a box, 0 for none.
int list_of_box(int index) {
    return index == 9 ? 1 : index == 11 ? 2 : 0;
}

bool is_amount_box(int index) {
    return index == 10 || index == 12;
}

}  // namespace

QString format_amount_mask(const QString& text, bool leading_zero) {
    bool ok = false;
    const double value = QLocale::c().toDouble(QString(text).remove(u',').trimmed(), &ok);
    if (!ok || !std::isfinite(value)) {
        return text;
    }
    QLocale grouped = QLocale::c();
    grouped.setNumberOptions(QLocale::DefaultNumberOptions);
    QString shown = grouped.toString(value, 'f', 2);
    if (shown == u"-0.00") {
        shown = QStringLiteral("0.00");
    }
    if (!leading_zero) {
        // "0.50" -> ".50", "-0.50" -> "-.50"
        const qsizetype zero = shown.startsWith(u'-') ? 1 : 0;
        if (shown.mid(zero, 2) == u"0.") {
            shown.remove(zero, 1);
        }
    }
    return shown;
}

int BankBox::width() const {
    if (field->type == FieldType::Int16) {
        return kMaskWidth;
    }
    return list_of_box(box) != 0 ? kYesNoWidth : field->width;
}

std::span<const BankBox> bank_boxes() {
    return kBankBoxes;
}

BankingDetails::BankingDetails(shell::Session& session) : session_(session) {}

void BankingDetails::form_load() {
    master_ = hold_working_record(session_, Code::PRSALG);
    const store::Record& r = session_.working(Code::PRSALG);
    caption = shell::staff_heading(r);
    closed = false;
    prs_data.fill(QString());
    data_teks.fill(QString());
    const QStringList rows = session_.afrikaans
                                 ? QStringList{QStringLiteral("JA"), QStringLiteral("NEE")}
                                 : QStringList{QStringLiteral("YES"), QStringLiteral("NO")};
    ja_nee_lys[1] = {rows, false};
    ja_nee_lys[2] = {rows, false};
    for (const BankBox& b : kBankBoxes) {
        data_teks[b.box] = session_.tr(b.afrikaans, b.english);
        prs_data[b.box] = b.field->type == FieldType::Int16
                              ? format_amount_mask(QString::number(r.int16(*b.field)), true)
                              : r.text(*b.field).trimmed();
    }
}

void BankingDetails::prs_data_got_focus(int index) {
    if (is_amount_box(index)) {
        prs_data[index] = format_amount_mask(prs_data[index], false);
    }
    // A list shows beside its own box only.
    for (int list = 1; list <= 2; ++list) {
        ja_nee_lys[list].visible = list_of_box(index) == list;
    }
}

void BankingDetails::prs_data_lost_focus(int index) {
    if (is_amount_box(index)) {
        // A value under 1 keeps its leading zero once the box is left.
        prs_data[index] = format_amount_mask(prs_data[index], true);
    }
}

TypedKey BankingDetails::prs_data_key_press(int, int key_ascii) {
    return typed_key(key_ascii, true);
}

void BankingDetails::ja_nee_lys_click(int list, int row) {
    if (list < 1 || list > 2 || row < 0 || row >= ja_nee_lys[list].rows.size()) {
        return;
    }
    prs_data[list == 1 ? 9 : 11] = ja_nee_lys[list].rows[row];
    ja_nee_lys[list].visible = false;
}

void BankingDetails::data_ok_click() {
    if (session_.browse_mode) {
        closed = true;
        return;
    }
    // The boxes go to a copy first, so that an amount the field cannot hold leaves the record
    // in memory and on disk as it was.
    std::optional<store::Record> found = read_held_for_edit(session_, master_);
    if (!found) {
        return;
    }
    store::Record& edited = *found;
    for (const BankBox& b : kBankBoxes) {
        if (b.field->type != FieldType::Int16) {
            // Cut to the width: the yes/no boxes keep the first letter, "J", "N" or "Y".
            edited.set_text(*b.field, prs_data[b.box]);
            continue;
        }
        const long long rands = whole_rands(prs_data[b.box]);
        if (!edited.set_int16(*b.field, rands)) {
            session_.dialogs().message(data_teks[b.box] + QStringLiteral(" : ") +
                                           shell::amount_range_message(rands, session_.afrikaans),
                                       ui::Icon::Exclamation);
            return;
        }
    }
    closed = write_held_record(session_, edited, master_);
}

}  // namespace korvel::staff
