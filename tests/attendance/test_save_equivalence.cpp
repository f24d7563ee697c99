// The register reads the attendance file once and writes each row's record by its number. These
// tests hold it to the bytes the plain way gives: for each row a scan of the file from record 1,
// passing over blank post numbers, blanking stale ".." ones, stopping at the first match.

#include <gtest/gtest.h>

#include "attendance/attendance_register.h"
#include "attendance_fixture.h"

using namespace korvel::attendance;
using korvel::store::Code;
using korvel::store::PRSAFW;
using korvel::testing::add_person;
using korvel::testing::AttendanceTree;
using korvel::testing::col_of_day;
using korvel::testing::open_month;
using korvel::testing::read_file;
using korvel::testing::row_of;
using korvel::testing::write_file;

namespace {

void save_by_scans(korvel::shell::Session& s, AttendanceRegister& reg) {
    const auto& post_field = PRSAFW["PF_POS_NR"];
    for (int row = kFirstStaffRow; row < reg.afw_grid.rows(); ++row) {
        const QString post = reg.afw_grid.text(row, kColPost).trimmed();
        int found = 0;
        for (int n = 1; n <= s.count(Code::PRSAFW) && found == 0; ++n) {
            s.read_record(Code::PRSAFW, n);
            auto& r = s.working(Code::PRSAFW);
            const QString key = r.text(post_field).trimmed();
            if (key.isEmpty()) {
                continue;
            }
            if (key.startsWith("..")) {
                r.set_text(post_field, QString());
                s.write_record(Code::PRSAFW, n);
                continue;
            }
            if (key == post) {
                found = n;
            }
        }
        if (found == 0) {
            continue;
        }
        auto& r = s.working(Code::PRSAFW);
        for (int day = 1; day <= reg.limits.days; ++day) {
            const int slot = reg.limits.first + day - 1;
            const QString cell = reg.afw_grid.text(row, day + 2).trimmed();
            QString reason = reg.rde_grid.text(row, day + 2);
            if (cell.isEmpty()) {
                reason.clear();
            }
            r.set_text(PRSAFW["PF_DAG"], cell.isEmpty() ? QString(".") : cell.left(1), slot);
            r.set_text(
                PRSAFW["PF_REDE"],
                reason.trimmed().isEmpty() ? QString("..") : reason_text(number_value(reason)),
                slot);
        }
        s.write_record(Code::PRSAFW, found);
    }
}

TEST(SaveEquivalence, SameBytesAsAScanPerRow) {
    AttendanceTree tree;
    for (int i = 0; i < 30; ++i) {
        add_person(tree.session, {.post = QString::number(100 + (i * 7) % 30),
                                  .surname = QString("S%1").arg(i % 5)});
    }
    // Stale and blank records between the real ones, and a second record of one post number.
    for (int i = 0; i < 30; ++i) {
        if (i % 4 == 0) {
            tree.set_day(QString("..%1").arg(i), 61, "a", "..");
        }
        if (i % 6 == 0) {
            tree.session.working(Code::PRSAFW).clear();
            tree.session.append_record(Code::PRSAFW);
        }
        tree.set_day(QString::number(100 + i), 61 + i % 5, "l", QString::number(i % 12));
    }
    tree.set_day("..end", 70, "a", "..");
    tree.session.append_record(Code::PRSAFW);  // "..end" twice, past every match

    auto reg = open_month(tree.session, 3);
    reg->afw_grid_click(2, col_of_day(2));
    for (int row = kFirstStaffRow; row < reg->afw_grid.rows(); row += 3) {
        reg->afw_grid_right_click(row, col_of_day(3 + row % 3));
        reg->ag_opsies_click(row % 9);
    }
    reg->grid_sort_click();

    const QByteArray before = read_file(tree.afw_path());
    reg->save_grid();
    const QByteArray by_book = read_file(tree.afw_path());

    write_file(tree.afw_path(), before);
    save_by_scans(tree.session, *reg);
    const QByteArray by_scans = read_file(tree.afw_path());
    ASSERT_EQ(by_book.size(), by_scans.size());
    EXPECT_TRUE(by_book == by_scans);
    EXPECT_NE(before, by_book);
}

TEST(SaveEquivalence, ARowWhoseRecordWentAwayScansTheWholeFile) {
    AttendanceTree tree;
    add_person(tree.session, {.post = "10", .surname = "ZULU"});
    add_person(tree.session, {.post = "20", .surname = "ADAMS"});
    auto reg = open_month(tree.session, 3);
    // Another workstation turned the record of 20 stale and left a stale one behind it.
    tree.set_day("20", 61, "a", "..");
    auto& r = tree.session.working(Code::PRSAFW);
    r.set_text(PRSAFW["PF_POS_NR"], "..20");
    tree.session.write_record(Code::PRSAFW, tree.session.state(Code::PRSAFW).current);
    tree.set_day("..x", 61, "a", "..");
    reg->save_grid();
    const QByteArray bytes = read_file(tree.afw_path());
    ASSERT_EQ(bytes.size(), 3 * korvel::testing::kAfwLength);
    EXPECT_EQ(bytes.mid(korvel::testing::kAfwLength, 5), "     ");
    EXPECT_EQ(bytes.mid(2 * korvel::testing::kAfwLength, 5), "     ");
    EXPECT_EQ(tree.mark("10", 61), ".");
}

}  // namespace
