#include <gtest/gtest.h>

#include <QDir>

#include "staff/staff_register.h"
#include "staff_fixture.h"

using namespace korvel::store;
using namespace korvel::staff;
using korvel::testing::add_person;
using korvel::testing::StaffTree;

namespace {

// A data tree with everything that could make one read of a file differ from a search per row:
// duplicate, odd and NUL keys in the subject file; duplicate, blank and NUL IDs and an odd
// length in the LURITS file (or none, to be seeded); a hidden population; a Western Cape school.
void messy_tree(StaffTree& t, bool with_lurits_file) {
    korvel::shell::Session& s = t.session;
    s.working(Code::SKL).set_text(SKL["SD_PROV"], "WC");
    s.open_file(Code::SKL, s.folders.school);
    s.write_record(Code::SKL, 1);
    add_person(s, {.post = "10", .surname = "A", .id = "8001015009087", .gender = "M"});
    add_person(s, {.post = "", .surname = "B", .id = "8001015009087"});
    add_person(s, {.post = "a12", .surname = "C", .klas = "PSS", .id = "7001015009087"});
    add_person(s, {.post = "0011", .surname = "D"});
    for (const char* name : {"E", "F", "G"}) {
        add_person(s, {.post = "12345", .surname = name, .state = "*"});
    }
    add_person(s, {.post = "13", .surname = "H", .id = "6001015009087"});
    add_person(s, {.post = "ÉÉ", .surname = "I", .klas = "ADMIN"});
    s.open_file(Code::PRSVAK);
    for (const char* key : {"10", "", "a12", "  11", "10", "A13"}) {
        s.working(Code::PRSVAK).clear();
        s.working(Code::PRSVAK).set_text(PRSVAK["PV_POS_NR"], key);
        s.append_record(Code::PRSVAK);
    }
    s.working(Code::PRSVAK).assign(QByteArray(PRSVAK.record_length, '\0').constData());
    s.append_record(Code::PRSVAK);
    if (with_lurits_file) {
        QByteArray lurits(26 * 2, '\0');
        for (const char* rec :
             {"8001015009087111111111", "8001015009087222222222", "7001015009087333333333"}) {
            lurits += QByteArray(rec) + QByteArray(4, '\0');
        }
        korvel::testing::write_file(t.staff_file("lurits_random.txt"), lurits + "6001015009087");
    } else {
        korvel::testing::write_file(t.staff_file("lurits_staffid.txt"),
                                    "\"6001015009087\",\"444444444\",1,2\r\n\"\",\"5\",0,0\r\n");
    }
    s.close_file(Code::PRSALG);
    s.close_file(Code::PRSVAK);
    s.close_file(Code::SKL);
}

std::map<QString, QByteArray> staff_files(const StaffTree& t) {
    std::map<QString, QByteArray> out;
    const QDir dir(t.session.fs().native(t.session.folders.staff));
    for (const QString& name : dir.entryList(QDir::Files)) {
        out[name] = korvel::testing::read_file(dir.filePath(name));
    }
    return out;
}

QString shown(const StaffRegister& reg) {
    QStringList out;
    for (const GridRow& row : reg.prs_grid.rows) {
        out << QStringList(row.cells.begin(), row.cells.end()).join(u'|');
    }
    return out.join(u'\n');
}

class FillEquivalence : public ::testing::TestWithParam<bool> {};

TEST_P(FillEquivalence, OneReadGivesWhatASearchPerRowGives) {
    StaffTree once, per_row;
    messy_tree(once, GetParam());
    messy_tree(per_row, GetParam());
    StaffRegister a(once.session, true), b(per_row.session, true);
    b.upkeep.scan_per_row = true;
    a.form_load();
    b.form_load();
    EXPECT_TRUE(shown(a).contains(GetParam() ? "|111111111|" : "|444444444|"))
        << shown(a).toStdString();
    for (int round = 0; round < 2; ++round) {
        EXPECT_EQ(shown(a), shown(b));
        EXPECT_EQ(staff_files(once), staff_files(per_row));
        a.personeel_tipe_click();
        b.personeel_tipe_click();
    }
}

INSTANTIATE_TEST_SUITE_P(LuritsFileOrSeed, FillEquivalence, ::testing::Bool());

}  // namespace
