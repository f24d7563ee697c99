#include "reports/staff_range.h"

namespace korvel::reports {

StaffRange::StaffRange(ui::Dialogs& dialogs, bool afrikaans)
    : dialogs_(dialogs), afrikaans_(afrikaans) {}

void StaffRange::set_rows(std::vector<StaffRangeRow> rows) {
    rows_ = std::move(rows);
    from_ = rows_.empty() ? 0 : 1;
    to_ = int(rows_.size());
    marker_ = From;
}

QString StaffRange::box_text(End end) const {
    const int row = row_of(end);
    if (row < 1 || row > int(rows_.size()))
        return {};
    return QString::number(row) + QStringLiteral(" ") + rows_[size_t(row - 1)].name;
}

void StaffRange::grid_click(int row) {
    if (row < 0 || row >= int(rows_.size()))
        return;
    (marker_ == From ? from_ : to_) = row + 1;
    marker_ = marker_ == From ? To : From;
}

int StaffRange::find_post(const QString& part) const {
    const QString wanted = part.trimmed();
    if (wanted.isEmpty())
        return -1;
    for (size_t i = 0; i < rows_.size(); ++i) {
        if (rows_[i].post.contains(wanted, Qt::CaseInsensitive))
            return int(i);
    }
    return -1;
}

int StaffRange::search(End end, const QString& typed) {
    const auto answer = dialogs_.input(
        afrikaans_ ? QStringLiteral("POSNOMMER (Nommer of gedeelte van nommer)")
                   : QStringLiteral("POST NUMBER (Number or part of number)"),
        afrikaans_ ? QStringLiteral("SOEK POSNOMMER") : QStringLiteral("SEARCH POST NUMBER"),
        typed);
    if (!answer)
        return -1;
    const int row = find_post(*answer);
    if (row >= 0) {
        marker_ = end;
        grid_click(row);
    }
    return row;
}

std::vector<int> StaffRange::selected_rows() const {
    std::vector<int> rows;
    if (from_ < 1 || to_ < 1)
        return rows;
    for (int r = from_; r <= to_ && r <= int(rows_.size()); ++r)
        rows.push_back(r - 1);
    return rows;
}

}  // namespace korvel::reports
