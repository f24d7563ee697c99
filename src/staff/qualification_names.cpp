#include "staff/qualification_names.h"

#include <array>

#include "platform/codepage.h"
#include "store/field_bytes.h"
#include "store/record_layouts.h"

namespace korvel::staff {

using store::PRSADD;
using store::PRSALG;

namespace {

const char* const kProf[] = {
    "Primary Teacher’s Certificate",
    "Secondary Teacher’s Certificate",
    "Primary Teacher’s Diploma",
    "Secondary Teacher’s Diploma",
    "Bachelor of Education",
    "Post Graduate Certificate in Education",
    "Further Diploma in Education",
    "Advanced Certificate in Education",
    "Higher Diploma in Education",
    "Advanced Certificate Teaching",
    "Junior Primary Teacher’s Diploma",
    "B.Tech in Education",
    "National professional Diploma in Education",
    "B.Ed Honors",
    "MA (Education)",
    "PHD (Education)",
};
const char* const kAkad[] = {"BA", "BSc", "B Com", "B Prim Ed", "Bachelor of Education"};
const char* const kDetail[] = {
    "Two year teacher’s certificate",
    "Three-year Teachers’ Diploma/National Professional Diploma in Education",
    "Four-year Higher Diploma in Education",
    "Four-year professional teaching degree",
    "Higher Diploma in Education (Post-Graduate)/Post-Graduate Certificate in Education",
    "One-year Post-Professional Teachers’ Certificate (with specialization)",
    "One-year Higher Diploma in Education",
    "Diploma in Specialized Education",
    "Further Diploma in Education",
    "Advanced Certificate in Education",
    "One-year National Higher Diploma/Bachelor of Technology (Education management/other "
    "specialization)",
    "Partially completed first Bachelor’s degree",
    "Three-year Bachelor’s degree",
    "Four-year Bachelor’s degree",
    "Four-year Bachelor of Technology degree",
    "Three-year National Diploma",
    "Four-year National Higher Diploma",
    "Post-Graduate Diploma (other than a HDE Post-Graduate)",
    "Honours degree (including an old one-year B Ed/BEd Honours))",
    "Master’s Degree",
    "Doctors Degree",
    "ABET Practitioner Certificate",
    "ABET Practitioner Diploma",
    "National N 3 to N 6 Certificates",
    "Completed apprenticeship/passed trade test",
    "National N Diploma",
    "Other",
};

const QualificationType kTypes[] = {
    {u'P', QualificationList::prof, &PRSADD["PD_KW_PROF"], "PROFESSIONEEL", "PROFESSIONAL"},
    {u'A', QualificationList::akad, &PRSADD["PD_KW_AKAD"], "AKADEMIES", "ACADEMIC"},
    {u'D', QualificationList::detail, &PRSADD["PD_KW_DETAIL"], "DETAIL", "DETAIL"},
};

}  // namespace

const QStringList& qualification_rows(QualificationList list) {
    // Decoded once: a list is looked up for every qualification of every person printed. Kept
    // for the life of the program, so a name can be handed out as raw data.
    static const auto* const lists = new std::array<QStringList, 3>([] {
        const auto decode = [](const auto& rows) {
            QStringList out;
            for (const char* r : rows) {
                out << QString::fromUtf8(r);
            }
            return out;
        };
        return std::array<QStringList, 3>{decode(kProf), decode(kAkad), decode(kDetail)};
    }());
    return (*lists)[static_cast<std::size_t>(list)];
}

std::span<const QualificationType> qualification_types() {
    return kTypes;
}

const QualificationType* qualification_type_of(const QString& text) {
    return text.isEmpty() ? nullptr : qualification_type_of(text.front());
}

const QualificationType* qualification_type_of(QChar letter) {
    for (const QualificationType& t : kTypes) {
        if (letter == t.letter) {
            return &t;
        }
    }
    return nullptr;
}

QString qualification_name(const store::Record& master, const store::Record& additional, int slot) {
    return qualification_name(master.data(), additional.data(), slot);
}

QString qualification_name(const char* master, const char* additional, int slot) {
    const std::string_view bytes = store::text_bytes(master, PRSALG["PK_GRDE"], slot);
    if (bytes.size() > 1) {
        return cp1252::decode(bytes.data(), qsizetype(bytes.size()));
    }
    // A type letter is a plain letter, the same in every code page.
    const QualificationType* t =
        bytes.empty() ? nullptr : qualification_type_of(QChar(uchar(bytes.front())));
    if (t == nullptr) {
        return {};
    }
    const QStringList& rows = qualification_rows(t->list);
    const int position = additional ? store::int16_bytes(additional, *t->positions, slot) : 0;
    if (position < 1 || position > rows.size())
        return {};
    // The lists live as long as the program: the lists of thousands of people copy a name
    // without counting references to it.
    const QString& name = rows[position - 1];
    return QString::fromRawData(name.constData(), name.size());
}

}  // namespace korvel::staff
