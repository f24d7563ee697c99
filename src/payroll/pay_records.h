#pragma once
// What the payroll reads: the staff on the school's own pay, and the month records of
// prs_lne_random.txt, gathered in one pass so that every report takes the same record of a
// person and month (the first in the file) without reading the file again for each person.

#include <QByteArray>
#include <QString>
#include <array>
#include <cstdint>
#include <optional>
#include <unordered_map>
#include <vector>

#include "store/record.h"

namespace korvel::shell {
class Session;
}

namespace korvel::payroll {

// A person of the payroll's staff list.
struct PayrollPerson {
    QString post;  // trimmed
    int record = 0;
    QString surname, names, title;
    QString id_number;
    QString appointed;  // the school appointment date, "YYYY.MM.DD"
};

// PRSALG from record 1, leaving out inactive records ("*"), blank post numbers and the staff
// the education department or a PYEI appointment pays (PA_OD_BL "P", "E", "O").
std::vector<PayrollPerson> payroll_staff(shell::Session& session);

struct PayLine {
    QString text;
    int amount = 0;
};

// One month's pay of a person, as PRSLNE holds it. Free lines are slots 1 to 3.
struct PayMonth {
    int record = 0;  // record number in the file
    QString occupation;
    int month = 0;
    int salary = 0, overtime = 0, bonus = 0;
    std::array<PayLine, 3> earnings_free;
    int pension = 0, uif = 0, tax = 0;
    std::array<PayLine, 3> deductions_free;

    // Sums in 64 bits: sixteen-bit amounts add up past their range.
    long long earnings() const;
    long long deductions() const;
    long long nett() const { return earnings() - deductions(); }
};

PayMonth pay_month(const store::Record& r, int record);

// Every PRSLNE record of a month 1 to 12 with a post number, the first of each person and
// month; read once. The file's bytes are kept as read and only the keys are looked at while
// gathering; a month's amounts and texts are taken from its record's bytes when asked for.
class PayBook {
  public:
    // The records of the file one after the other, record 1 first; a short last record
    // reads as if padded with NULs.
    explicit PayBook(QByteArray records = {});
    // nullopt when the person has no record for the month.
    std::optional<PayMonth> find(const QString& post, int month) const;

  private:
    // post (trimmed, upper case, as up to eight bytes) -> record number per month; 0: none
    std::unordered_map<std::uint64_t, std::array<int, 13>> index_;
    QByteArray records_;
};

// Reads the file from record 1 through the session (opening PRSLNE if it is closed).
PayBook read_pay_book(shell::Session& session);

}  // namespace korvel::payroll
