#pragma once
// The learner tables of the demo tree: grades 11 and 12 of the demo school in the current
// year, with classes whose subject rows name the demo's educators as teachers, so that the
// staff subject rebuild has something to read.

#include <QString>

namespace korvel::staff {

// Writes the tables below the native admin folder, in L11 and L12 with the year's last two
// digits. Returns the number of grades written.
int write_demo_learner_tables(const QString& native_admin, int year);

}  // namespace korvel::staff
