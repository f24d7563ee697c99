#pragma once
// The demo tree's files of the timetable system: a cycle of six days of nine periods, its
// staff and subject periods, and a timetable for each active educator of the master file.

#include <QStringList>

namespace korvel::shell {

class Session;

// Writes them in the session's roster folder (made when missing); the native paths written
// are added to files.
void write_demo_roster(Session& session, QStringList& files);

}  // namespace korvel::shell
