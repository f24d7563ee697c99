#include "shell/demo_roster.h"

#include "platform/winpath.h"
#include "shell/helpers.h"
#include "shell/session.h"
#include "shell/staff_person.h"
#include "store/record.h"
#include "store/record_layouts.h"
#include "store/roster_layouts.h"

namespace korvel::shell {

namespace {

using store::Record;

constexpr int kDays = 6;
constexpr int kPeriods = 9;
const char* const kTimes[kPeriods] = {"07:45-08:20", "08:20-08:55", "08:55-09:30",
                                      "09:30-10:05", "10:25-11:00", "11:00-11:35",
                                      "11:35-12:10", "12:30-13:05", "13:05-13:40"};
// Subject key, name.
const char* const kSubjects[][2] = {{"WISK", "WISKUNDE"},
                                    {"AFR", "AFRIKAANS"},
                                    {"ENG", "ENGELS"},
                                    {"FISI", "FISIESE WETENSKAPPE"},
                                    {"LEWE", "LEWENSWETENSKAPPE"},
                                    {"GES", "GESKIEDENIS"}};
const char* const kClasses[] = {"A", "B", "C", "D"};

void append(QByteArray& file, const Record& r) {
    file.append(r.bytes());
}

}  // namespace

void write_demo_roster(Session& session, QStringList& files) {
    const QString folder = session.folders.roster;
    session.fs().create_folder(folder);
    const auto write = [&](const store::Layout& layout, const QByteArray& bytes) {
        const QString path = winpath::join(
            folder,
            QString::fromLatin1(layout.file_name.data(), qsizetype(layout.file_name.size())));
        session.fs().write_all(path, bytes);
        files << session.fs().native(path);
    };

    Record school(store::RSTR_SKL);
    school.clear();
    school.set_text(store::RSTR_SKL["RS_DAE"], QString::number(kDays));
    school.set_text(store::RSTR_SKL["RS_PERIODES"], QString::number(kPeriods));
    for (int p = 0; p < kPeriods; ++p)
        school.set_text(store::RSTR_SKL["RS_TYE"], QString::fromLatin1(kTimes[p]), p);
    write(store::RSTR_SKL, school.bytes());

    QByteArray subjects;
    Record subject(store::RSTR_VAK);
    for (const auto& s : kSubjects) {
        subject.clear();
        subject.set_text(store::RSTR_VAK["RV_SLEUTEL"], QString::fromLatin1(s[0]));
        subject.set_text(store::RSTR_VAK["RV_NAAM"], QString::fromLatin1(s[1]));
        append(subjects, subject);
    }
    write(store::RSTR_VAK, subjects);

    // Every active educator of the master file teaches two subjects in two grades.
    QByteArray staff, timetables;
    Record person(store::RSTR_PRS);
    Record timetable(store::RSTR_POS);
    const auto& L = store::PRSALG;
    int n = 0;
    const bool opened = !session.is_open(store::Code::PRSALG);
    if (opened)
        session.open_file(store::Code::PRSALG);
    session.scan_records(store::Code::PRSALG, [&](int, Record& r) {
        const QString post = r.text(L["PA_POS_NR"]).trimmed();
        if (post.isEmpty() || !r.text(L["PA_AKTIEF"]).trimmed().isEmpty() || !is_educator(r))
            return;
        const QString surname = r.text(L["PA_VAN"]).trimmed();
        const QString initials = shell::initials(r.text(L["PA_NAME"]).trimmed());
        person.clear();
        person.set_text(store::RSTR_PRS["RP_POS_NR"], post);
        person.set_text(store::RSTR_PRS["RP_VAN"], surname);
        person.set_text(store::RSTR_PRS["RP_NAME"], r.text(L["PA_NAME"]).trimmed());
        person.set_text(store::RSTR_PRS["RP_VRLTR"], initials);
        append(staff, person);

        timetable.clear();
        timetable.set_text(store::RSTR_POS["RT_POS_NR"], post);
        timetable.set_text(store::RSTR_POS["RT_NAAM"], surname + u' ' + initials);
        for (int d = 0; d < kDays; ++d) {
            for (int p = 0; p < kPeriods; ++p) {
                // About two periods in three are taught; the rest are free.
                if ((d * kPeriods + p + n) % 3 == 2)
                    continue;
                const auto& s = kSubjects[(n + p / 5) % std::size(kSubjects)];
                const int grade = 8 + (n + d + p) % 5;
                const QString entry = QString::fromLatin1(s[0]).leftJustified(5) +
                                      QString::number(grade).leftJustified(3) +
                                      QString::fromLatin1(kClasses[(d + p) % 4]).leftJustified(3);
                timetable.set_text(store::RSTR_POS["RT_SEL"], entry, d * kPeriods + p);
            }
        }
        timetable.set_text(store::RSTR_POS["RT_SEL"], QStringLiteral("VERGADERING"),
                           kPeriods - 1);  // a staff meeting on the first day
        append(timetables, timetable);
        ++n;
    });
    if (opened)
        session.close_file(store::Code::PRSALG);
    write(store::RSTR_PRS, staff);
    write(store::RSTR_POS, timetables);
}

}  // namespace korvel::shell
