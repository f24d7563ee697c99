#include "shell/school.h"

#include "platform/winpath.h"
#include "shell/helpers.h"

namespace korvel::shell {

using store::Code;
using store::SKL;

QStringList province_list() {
    return {QStringLiteral("EC : EASTERN CAPE"),    QStringLiteral("WC : WESTERN CAPE"),
            QStringLiteral("NC : NORTHERN CAPE"),   QStringLiteral("FS : FREE STATE"),
            QStringLiteral("KN : KWA-ZULU NATAL"),  QStringLiteral("NW : NORTH WEST"),
            QStringLiteral("GT : GAUTENG"),         QStringLiteral("MP : MPUMALANGA"),
            QStringLiteral("LP : LIMPOPO PROVINCE")};
}

QString school_initials(const QString& name) {
    QString out;
    const QStringList words = name.split(u' ', Qt::SkipEmptyParts);
    for (const QString& w : words) {
        if (out.size() == 5) {
            break;
        }
        out += w.at(0).toUpper();
    }
    return out;
}

namespace {

// Looks the province code up in the list; the first match wins, and with none the name and
// index keep what they had.
void look_up_province(Session& s) {
    if (s.provinces.isEmpty()) {
        s.provinces = province_list();
    }
    for (int i = 0; i < s.provinces.size(); ++i) {
        if (s.provinces.at(i).left(2) == s.school.province_code) {
            s.school.province_name = s.provinces.at(i).mid(5);
            s.school.province_index = i + 1;
            return;
        }
    }
}

}  // namespace

bool load_school_record(Session& s) {
    if (!s.open_file(Code::SKL, s.folders.school)) {
        return false;
    }
    store::Record& r = s.working(Code::SKL);
    const bool has_record = s.count(Code::SKL) >= 1;
    s.read_record(Code::SKL, 1);
    for (const store::Field& f : SKL.fields) {
        if (f.type == store::FieldType::Text) {
            for (int i = 0; i < f.count; ++i) {
                r.trim_text(f, i);
            }
        }
    }
    const QString name = r.text(SKL["SD_SKOOL"]);
    if (name != s.school.name) {
        s.school.name = upper_name(name);
    }
    s.school.initials = school_initials(s.school.name);
    s.school.province_code = r.text(SKL["SD_PROV"]);
    s.school.address1 = r.text(SKL["SD_ADRES1"]);
    s.school.address2 = r.text(SKL["SD_ADRES2"]);
    s.school.address3 = r.text(SKL["SD_ADRES3"]);
    s.school.postal_code = r.text(SKL["SD_KODE"]);
    s.school.street1 = r.text(SKL["SD_S_ADR1"]);
    s.school.street2 = r.text(SKL["SD_S_ADR2"]);
    s.school.street3 = r.text(SKL["SD_S_ADR3"]);
    s.school.street_code = r.text(SKL["SD_S_KODE"]);
    s.school.telephone = r.text(SKL["SD_FOON"]);
    s.school.telephone_code = r.text(SKL["SD_FOON_K"]);
    s.school.fax = r.text(SKL["SD_FAKS"]);
    s.school.fax_code = r.text(SKL["SD_FAKS_K"]);
    s.school.email = r.text(SKL["SD_EMAIL"]);
    s.school.principal = r.text(SKL["SX_HOOF"]);
    s.school.district_number = r.text(SKL["SD_DIST_NR"]);
    s.school.district = r.text(SKL["SD_DISTRIK"]);
    // The boolean holds 0 or true (-1, or 1 from some writers). Anything else was never
    // written as a boolean (blanks, say): it is made true and the record written at once. A
    // file without its record has nothing to write back; its flag counts as true.
    const std::int16_t oudstes = r.int16(SKL["SD_OUDSTES"]);
    const bool is_boolean = oudstes == 0 || oudstes == -1 || oudstes == 1;
    if (has_record && !is_boolean) {
        r.set_int16(SKL["SD_OUDSTES"], -1);
        s.write_record(Code::SKL, 1);
    }
    s.school.school_flag = !has_record || oudstes != 0 ? QStringLiteral("D") : QStringLiteral("A");
    look_up_province(s);
    return true;
}

void fix_province(Session& s) {
    if (!s.is_open(Code::SKL) && !s.open_file(Code::SKL, s.folders.school)) {
        return;
    }
    if (s.count(Code::SKL) < 1) {
        look_up_province(s);
        return;
    }
    static const char* const kByDigit[] = {"WC", "EC", "NC", "FS", "KN", "NW", "GT", "MP", "LP"};
    s.read_record(Code::SKL, 1);
    store::Record& r = s.working(Code::SKL);
    const QString old = r.text(SKL["SD_WYK"]);
    if (!old.isEmpty() && old.at(0) >= u'1' && old.at(0) <= u'9') {
        r.set_text(SKL["SD_PROV"], QString::fromLatin1(kByDigit[old.at(0).unicode() - '1']));
        s.write_record(Code::SKL, 1);
    }
    s.school.province_code = r.text(SKL["SD_PROV"]).trimmed();
    look_up_province(s);
}

void find_school_pictures(Session& s) {
    using winpath::join;
    const QString general = s.folders.general_year;
    const QString jpg = join(general, QStringLiteral("SKOOLWAPEN.JPG"));
    const QString bmp = join(general, QStringLiteral("SKOOLWAPEN.BMP"));
    s.badge_file.clear();
    if (!s.fs().file_exists(jpg) && !s.fs().file_exists(bmp)) {
        const QString admin_bmp = join(s.folders.admin, QStringLiteral("BMP_SKN1.BMP"));
        bool ok = false;
        const int year = s.ledger_year.toInt(&ok);
        QString last_year = general;
        if (ok) {
            last_year.replace(s.ledger_year, QString::number(year - 1));
        }
        if (s.fs().file_exists(admin_bmp)) {
            s.fs().copy_file(admin_bmp, bmp);
        } else if (ok && s.fs().file_exists(join(last_year, QStringLiteral("SKOOLWAPEN.JPG")))) {
            s.fs().copy_file(join(last_year, QStringLiteral("SKOOLWAPEN.JPG")), jpg);
        }
    }
    for (const QString& candidate : {jpg, bmp}) {
        if (s.fs().file_exists(candidate)) {
            s.badge_file = candidate;
            break;
        }
    }
    s.province_badge_file.clear();
    for (const char* ending : {".JPG", ".BMP"}) {
        const QString p =
            join(general, s.school.province_code + QStringLiteral("_OD") + QLatin1String(ending));
        if (!s.school.province_code.isEmpty() && s.fs().file_exists(p)) {
            s.province_badge_file = p;
            break;
        }
    }
}

}  // namespace korvel::shell
