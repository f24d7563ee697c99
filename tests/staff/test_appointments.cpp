#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "detail_fixture.h"
#include "staff/address_family.h"
#include "staff/appointments.h"
#include "staff/banking.h"
#include "staff/experience.h"
#include "staff/qualifications.h"

using namespace korvel;
using namespace korvel::staff;
using korvel::testing::DetailTree;
using store::PRSALG;

namespace {

// A child form (the attendance register's month scan, for one) may leave another person in the
// working records; each detail form still writes its own person's records, found by key.
TEST(DetailForms, EachWritesItsOwnPersonWhateverTheWorkingRecordHolds) {
    using Save = std::function<bool(shell::Session&)>;
    const auto form = [](auto make, auto ok) -> Save {
        return [=](shell::Session& s) {
            auto f = make(s);
            f.form_load();
            s.read_record(store::Code::PRSALG, 1);
            s.read_record(store::Code::PRSADD, 1);
            ok(f);
            return f.closed;
        };
    };
    const std::pair<const char*, Save> cases[] = {
        {"address",
         form([](auto& s) { return AddressFamily(s); }, [](auto& f) { f.data_ok_click(); })},
        {"banking",
         form([](auto& s) { return BankingDetails(s); }, [](auto& f) { f.data_ok_click(); })},
        {"appointments",
         form([](auto& s) { return Appointments(s, true); }, [](auto& f) { f.grid_ok_click(); })},
        {"experience",
         form([](auto& s) { return Experience(s); }, [](auto& f) { f.jre_ok_click(); })},
        {"qualifications",
         form([](auto& s) { return Qualifications(s); }, [](auto& f) { f.grid_ok_click(); })},
    };
    for (const auto& [name, save] : cases) {
        SCOPED_TRACE(name);
        DetailTree tree;
        const QByteArray other_master = tree.on_disk(store::PRSALG, 1).bytes();
        const QByteArray other_additional = tree.on_disk(store::PRSADD, 1).bytes();
        EXPECT_TRUE(save(tree.session));
        EXPECT_EQ(tree.on_disk(store::PRSALG, 1).bytes(), other_master);
        EXPECT_EQ(tree.on_disk(store::PRSADD, 1).bytes(), other_additional);
        EXPECT_EQ(tree.on_disk(store::PRSALG, tree.number).text(PRSALG["PA_VAN"]).trimmed(),
                  "DU TOIT");
    }
}

TEST(Appointments, DatesRowsAndTypeLettersByLanguage) {
    for (const bool af : {true, false}) {
        DetailTree tree;
        tree.session.afrikaans = af;
        // A NaN date on disk shows as none.
        tree.master().set_date_serial(PRSALG["PA_DTM"], std::numeric_limits<double>::quiet_NaN(),
                                      2);
        tree.master().set_text(PRSALG["PA_WAAR"], "OU SKOOL", 2);
        Appointments a(tree.session, true);
        a.form_load();
        EXPECT_EQ(a.aan_grid.cell(2, 0), "OU SKOOL");
        EXPECT_EQ(a.aan_grid.cell(2, 3), "");
        // A blank date box gets today before the calendar opens; closing it keeps today.
        a.dtm_data_click(1);
        EXPECT_EQ(a.dtm_data[1], "2026.03.02");
        tree.dialogs.pick(QDate(2001, 1, 15));
        a.dtm_data_click(1);
        a.dtm_data[2] = "2016.13.01";
        a.aan_grid_click(1);
        EXPECT_TRUE(a.data_raam_visible);
        EXPECT_FALSE(a.aan_grid.enabled);
        a.prs_data = {"", "HOERSKOOL", "ONDERWYSER", "", "2010.01.10"};
        a.tp_lys_click(2);  // AFLOS / SUBSTITUTE
        a.data_ok_click();
        a.grid_ok_click();
        EXPECT_TRUE(a.closed);
        const store::Record r = tree.on_disk(PRSALG, tree.number);
        EXPECT_EQ(r.date(PRSALG["PA_DTM_AAN"]), QDate(2001, 1, 15));
        EXPECT_EQ(r.date_serial(PRSALG["PA_DTM_SKL"]), 0.0);
        EXPECT_EQ(r.text(PRSALG["PA_TPA"], 1), af ? "A" : "S");
        EXPECT_EQ(r.text(PRSALG["PA_WAAR"], 1), "HOERSKOOL");
        EXPECT_EQ(r.date(PRSALG["PA_DTM"], 1), QDate(2010, 1, 10));
        EXPECT_EQ(r.date_serial(PRSALG["PA_DTM"], 2), 0.0);
    }
}

TEST(Appointments, EmployeesSetTheDatesOnly) {
    DetailTree tree;
    tree.master().set_text(PRSALG["PA_WAAR"], "KEEP", 1);
    tree.session.write_record(store::Code::PRSALG, tree.number);
    Appointments a(tree.session, false);
    a.form_load();
    a.aan_grid_click(1);
    EXPECT_FALSE(a.data_raam_visible);
    a.aan_grid.cell(1, 0) = "CHANGED";  // whatever the grid holds is not stored
    a.dtm_data = {"", "1999.02.01", "2005.07.01"};
    a.grid_ok_click();
    const store::Record r = tree.on_disk(PRSALG, tree.number);
    EXPECT_EQ(r.date(PRSALG["PA_DTM_SKL"]), QDate(2005, 7, 1));
    EXPECT_EQ(r.text(PRSALG["PA_WAAR"], 1), "KEEP");
}

}  // namespace
