#include "payroll/pay_records.h"

#include <QFile>
#include <cstring>

#include "platform/codepage.h"
#include "shell/helpers.h"
#include "shell/session.h"
#include "store/record_file.h"

namespace korvel::payroll {

using store::Code;
using store::Field;
using store::PRSALG;
using store::PRSLNE;

std::vector<PayrollPerson> payroll_staff(shell::Session& s) {
    std::vector<PayrollPerson> people;
    if (!s.is_open(Code::PRSALG))
        s.open_staff_file(QStringLiteral("PRSALG"));
    static const Field& kActive = PRSALG["PA_AKTIEF"];
    static const Field& kPost = PRSALG["PA_POS_NR"];
    static const Field& kPaymaster = PRSALG["PA_OD_BL"];
    s.scan_records(Code::PRSALG, [&](int number, store::Record& r) {
        const QString post = r.text(kPost).trimmed();
        const QString paymaster = r.text(kPaymaster).trimmed().toUpper();
        if (r.text(kActive).trimmed() == u"*" || post.isEmpty() || paymaster == u"P" ||
            paymaster == u"E" || paymaster == u"O")
            return;
        PayrollPerson p;
        p.post = post;
        p.record = number;
        p.surname = r.text(PRSALG["PA_VAN"]).trimmed();
        p.names = r.text(PRSALG["PA_NAME"]).trimmed();
        p.title = r.text(PRSALG["PA_TITEL"]).trimmed();
        p.id_number = r.text(PRSALG["PA_ID_NR"]).trimmed();
        const auto appointed = r.date(PRSALG["PA_DTM_SKL"]);
        p.appointed = appointed ? shell::date_to_text(*appointed) : QString();
        people.push_back(p);
    });
    return people;
}

long long PayMonth::earnings() const {
    long long sum = 0LL + salary + overtime + bonus;
    for (const PayLine& l : earnings_free)
        sum += l.amount;
    return sum;
}

long long PayMonth::deductions() const {
    long long sum = 0LL + pension + uif + tax;
    for (const PayLine& l : deductions_free)
        sum += l.amount;
    return sum;
}

PayMonth pay_month(const store::Record& r, int record) {
    static const Field& kEarnText = PRSLNE["pl_i_teks"];
    static const Field& kEarn = PRSLNE["PL_I_BDRG"];
    static const Field& kDedText = PRSLNE["pl_u_teks"];
    static const Field& kDed = PRSLNE["pl_u_bdrg"];
    PayMonth m;
    m.record = record;
    m.occupation = r.text(PRSLNE["POS_BSK"]).trimmed();
    m.month = r.int16(PRSLNE["PL_MAAND"]);
    m.salary = r.int16(PRSLNE["PL_SALARIS"]);
    m.overtime = r.int16(PRSLNE["PL_OORTYD"]);
    m.bonus = r.int16(PRSLNE["PL_BONUS"]);
    m.pension = r.int16(PRSLNE["PL_PENS"]);
    m.uif = r.int16(PRSLNE["PL_WVF"]);
    m.tax = r.int16(PRSLNE["PL_TAX"]);
    for (int i = 1; i <= 3; ++i) {
        m.earnings_free[size_t(i - 1)] = {r.text(kEarnText, i).trimmed(), r.int16(kEarn, i)};
        m.deductions_free[size_t(i - 1)] = {r.text(kDedText, i).trimmed(), r.int16(kDed, i)};
    }
    return m;
}

namespace {

// A post number as the book keys it: trimmed of blanks and NULs, ASCII letters upper case, its
// bytes packed into one number (a post number is five characters, so they always fit).
std::uint64_t post_key(const char* p, int width) {
    int begin = 0, end = width;
    while (begin < end && (p[begin] == ' ' || p[begin] == '\0'))
        ++begin;
    while (end > begin && (p[end - 1] == ' ' || p[end - 1] == '\0'))
        --end;
    if (end - begin > 8)
        end = begin + 8;
    std::uint64_t key = 0;
    for (int i = begin; i < end; ++i) {
        char c = p[i];
        if (c >= 'a' && c <= 'z')
            c = char(c - 'a' + 'A');
        key = key << 8 | std::uint8_t(c);
    }
    return key;
}

}  // namespace

PayBook::PayBook(QByteArray records) : records_(std::move(records)) {
    static const Field& kPost = PRSLNE["PL_POS_NR"];
    static const Field& kMonth = PRSLNE["PL_MAAND"];
    const qsizetype length = PRSLNE.record_length;
    const qsizetype whole = (records_.size() + length - 1) / length * length;
    if (whole != records_.size())
        records_.append(QByteArray(whole - records_.size(), '\0'));
    const char* bytes = records_.constData();
    const int count = int(records_.size() / length);
    for (int n = 0; n < count; ++n, bytes += length) {
        std::int16_t month = 0;
        std::memcpy(&month, bytes + kMonth.offset, sizeof month);
        if (month < 1 || month > 12)
            continue;
        const std::uint64_t key = post_key(bytes + kPost.offset, kPost.width);
        if (key == 0)
            continue;
        int& slot = index_[key][size_t(month)];
        if (slot == 0)
            slot = n + 1;  // the first record of a person and month holds
    }
}

std::optional<PayMonth> PayBook::find(const QString& post, int month) const {
    if (month < 1 || month > 12)
        return std::nullopt;
    const QByteArray text = cp1252::encode(post);
    const auto it = index_.find(post_key(text.constData(), int(text.size())));
    if (it == index_.end() || it->second[size_t(month)] == 0)
        return std::nullopt;
    const int number = it->second[size_t(month)];
    store::Record r(PRSLNE);
    r.assign(records_.constData() + qsizetype(number - 1) * PRSLNE.record_length);
    return pay_month(r, number);
}

PayBook read_pay_book(shell::Session& s) {
    if (!s.is_open(Code::PRSLNE))
        s.open_staff_file(QStringLiteral("PRSLNE"));
    const store::RecordFile* file = s.file(Code::PRSLNE);
    const int count = s.count(Code::PRSLNE);
    if (file == nullptr || count < 1)
        return PayBook();
    // The whole file in one read: the records the count covers, no more.
    QFile f(file->native_path());
    if (!f.open(QIODevice::ReadOnly))
        return PayBook();
    return PayBook(f.read(qint64(count) * PRSLNE.record_length));
}

}  // namespace korvel::payroll
