#pragma once
// The import of the education department's LURITS staff workbook: each person of rows 17 to 500
// of its first sheet becomes a staff record with the post number "L" and the row number less 16.
// The record in memory is not cleared between rows, so what a row does not set keeps the value
// of the row before it (for the first row, of the staff record in memory).
//
// Every row is converted before anything is written: a workbook that cannot be read, or a value
// that cannot be stored, adds nothing and says where it is.

#include <QString>
#include <optional>
#include <vector>

#include "reports/workbook_reader.h"
#include "shell/session.h"

namespace korvel::staff {

inline constexpr int kLuritsFirstRow = 17;
inline constexpr int kLuritsLastRow = 500;

// The population code of a word of column 8; nullopt for a word it does not know.
std::optional<int> lurits_population(const QString& word);

inline constexpr int kLuritsRows = kLuritsLastRow - kLuritsFirstRow + 1;

// The records the sheet gives, each the record in memory after its row; nullopt (after the
// message) when a value cannot be stored. The working record ends as the last row left it.
// progress, if given, is told each row done (1 to kLuritsRows).
std::optional<std::vector<store::Record>> convert_lurits_sheet(shell::Session& session,
                                                               const reports::WorkbookReader& sheet,
                                                               const QString& file,
                                                               ui::Progress* progress = nullptr);

// The menu's command: the question, the file, the conversion, the records appended and the
// message that it is done. The number of records added; 0 when nothing was.
int import_lurits_staff(shell::Session& session);

}  // namespace korvel::staff
