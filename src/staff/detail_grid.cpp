#include "staff/detail_grid.h"

#include "shell/helpers.h"

namespace korvel::staff {

void DetailGrid::set_format(const QString& format) {
    headings.clear();
    right_aligned.fill(false);
    const QStringList parts = format.split(u'|');
    columns = std::min(static_cast<int>(parts.size()), kMaxGridColumns);
    for (int c = 0; c < columns; ++c) {
        QString h = parts[c];
        if (h.startsWith(u'>')) {
            right_aligned[static_cast<std::size_t>(c)] = true;
        }
        if (h.startsWith(u'>') || h.startsWith(u'<')) {
            h.remove(0, 1);
        }
        headings << h;
    }
}

void DetailGrid::resize(int rows) {
    cells.assign(static_cast<std::size_t>(std::max(rows, 1)), {});
    for (int c = 0; c < columns; ++c) {
        cells[0][static_cast<std::size_t>(c)] = headings.value(c);
    }
    current_row = 0;
}

QDate typed_date(const QString& text) {
    const QString dotted = shell::date_to_text(text.trimmed());
    if (dotted.isEmpty()) {
        return {};
    }
    // The dot form comes back as typed, so a month 13 is caught here.
    return QDate::fromString(dotted, QStringLiteral("yyyy.MM.dd"));
}

QString shown_date(const std::optional<QDate>& date) {
    return date ? shell::date_to_text(*date) : QString();
}

bool typed_int16(const QString& text, long long& value) {
    value = shell::number_value(text);
    return value >= -32768 && value <= 32767;
}

void tell_number_too_large(shell::Session& session, const QString& label) {
    session.dialogs().message(label.trimmed() + QStringLiteral(" : ") +
                                  session.tr("GETAL TE GROOT - HOOGSTENS 32767. NIE GESTOOR NIE!",
                                             "NUMBER TOO LARGE - AT MOST 32767. NOT SAVED!"),
                              ui::Icon::Exclamation);
}

}  // namespace korvel::staff
