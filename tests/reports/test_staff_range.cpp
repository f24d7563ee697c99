// The range of staff on a form's grid: the marker, the post number search, the rows taken.

#include <gtest/gtest.h>

#include "reports/staff_range.h"
#include "ui/scripted_dialogs.h"

namespace korvel::reports {
namespace {

TEST(StaffRange, ClicksAlternateAndTheRangeRunsFromTo) {
    ui::ScriptedDialogs dialogs;
    StaffRange range(dialogs, false);
    range.set_rows({{"10", "A", 1}, {"A12", "B", 2}, {"130", "C", 3}, {"14", "D", 4}});
    EXPECT_EQ(range.selected_rows(), (std::vector<int>{0, 1, 2, 3}));
    range.grid_click(1);
    range.grid_click(2);
    EXPECT_EQ(range.box_text(StaffRange::From), QStringLiteral("2 B"));
    EXPECT_EQ(range.selected_rows(), (std::vector<int>{1, 2}));
    range.grid_click(3);  // the marker is back at From
    EXPECT_TRUE(range.selected_rows().empty());
    // A search takes any post number holding the text.
    dialogs.type(QStringLiteral("3"));
    EXPECT_EQ(range.search(StaffRange::To, QStringLiteral("3")), 2);
    EXPECT_EQ(range.row_of(StaffRange::To), 3);
    EXPECT_TRUE(range.selected_rows().empty());  // From 4 lies past To 3
}

}  // namespace
}  // namespace korvel::reports
