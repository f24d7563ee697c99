// Personeel_vakke: the subject code list and its form.
#include "staff/subject_codes.h"

#include "platform/codepage.h"
#include "platform/winpath.h"

namespace korvel::staff {

std::vector<SubjectCode> parse_subject_codes(const QByteArray& bytes) {
    std::vector<SubjectCode> out;
    const QString text = cp1252::decode(bytes);
    for (QStringView line : QStringView(text).split(u'\n')) {
        if (line.endsWith(u'\r')) {
            line.chop(1);
        }
        QString cleaned = line.toString();
        cleaned.replace(u'?', u'\'');
        cleaned.remove(u'"');
        const QStringList columns = cleaned.split(u',');
        SubjectCode row{columns.value(0).trimmed(), columns.value(1).trimmed(), columns.value(2),
                        columns.value(3)};
        if (row.code.isEmpty()) {
            break;
        }
        out.push_back(std::move(row));
    }
    return out;
}

QString subject_code_file(const store::Folders& folders) {
    return winpath::join(folders.suite_home, QStringLiteral("vakkodes grade r-12.csv"));
}

SubjectCodes::SubjectCodes(std::vector<SubjectCode> rows) : rows_(std::move(rows)) {
    by_code_.reserve(static_cast<qsizetype>(rows_.size()));
    for (int i = 0; i < static_cast<int>(rows_.size()); ++i) {
        const QString& code = rows_[static_cast<std::size_t>(i)].code;
        if (!by_code_.contains(code)) {
            by_code_.insert(code, i);  // the first row of a code wins
        }
    }
}

SubjectCodes SubjectCodes::load(shell::Session& session) {
    if (session.folders.suite_home.isEmpty()) {
        return {};
    }
    const std::optional<QByteArray> bytes =
        session.fs().read_all(subject_code_file(session.folders));
    return bytes ? SubjectCodes(parse_subject_codes(*bytes)) : SubjectCodes();
}

const SubjectCode* SubjectCodes::find(const QString& code) const {
    const auto it = by_code_.constFind(code.trimmed());
    return it == by_code_.cend() ? nullptr : &rows_[static_cast<std::size_t>(*it)];
}

QString SubjectCodes::subject_name(const QString& code, bool afrikaans) const {
    const SubjectCode* row = find(code);
    return row == nullptr ? QString() : row->name(afrikaans);
}

// ---- the form ----------------------------------------------------------------------------------

SubjectChooser::SubjectChooser(shell::Session& session, const SubjectCodes& codes,
                               QString current_code)
    : session_(session), codes_(codes), current_code_(std::move(current_code)) {}

void SubjectChooser::form_load() {
    caption = session_.tr("PERSONEEL LURITS-VAKKODES", "STAFF LURITS SUBJECT CODES");
    closed = false;
    RegisterGrid& g = lurits_vaklys;
    g.columns = {};
    g.columns[kSubjectName] = {session_.tr("VAKNAAM", "SUBJECT NAME"), kDefaultWidth};
    g.columns[kSubjectGrade] = {QStringLiteral("GRD"), kDefaultWidth};
    g.columns[kSubjectCode] = {QStringLiteral("LURITS #"), kDefaultWidth};
    g.rows.clear();
    g.rows.reserve(codes_.rows().size());
    for (const SubjectCode& c : codes_.rows()) {
        GridRow row;
        row.cells[kSubjectName] = c.name(session_.afrikaans);
        row.cells[kSubjectGrade] = c.grade;
        row.cells[kSubjectCode] = c.code;
        g.rows.push_back(std::move(row));
    }
    g.sort_column = kSubjectName;
    g.ascending = true;
    g.sort();
    // The caller's code is selected; the form scrolls it into view.
    const QString current = current_code_.trimmed();
    if (!current.isEmpty()) {
        for (int i = 0; i < static_cast<int>(g.rows.size()); ++i) {
            if (g.rows[static_cast<std::size_t>(i)].cells[kSubjectCode] == current) {
                g.selected = i;
                break;
            }
        }
    }
}

void SubjectChooser::lurits_vaklys_column_click(int column) {
    if (column < 0 || column >= kSubjectColumns) {
        return;
    }
    // Sorting keeps the selected row selected.
    const std::optional<Pick> before = chosen();
    lurits_vaklys.header_click(column);
    if (!before) {
        return;
    }
    for (int i = 0; i < static_cast<int>(lurits_vaklys.rows.size()); ++i) {
        const GridRow& r = lurits_vaklys.rows[static_cast<std::size_t>(i)];
        if (r.cells[kSubjectCode] == before->code && r.cells[kSubjectName] == before->name) {
            lurits_vaklys.selected = i;
            return;
        }
    }
}

void SubjectChooser::lurits_vaklys_click(int row) {
    if (row < 0 || row >= static_cast<int>(lurits_vaklys.rows.size())) {
        return;
    }
    lurits_vaklys.selected = row;
    closed = true;
}

std::optional<SubjectChooser::Pick> SubjectChooser::chosen() const {
    const int s = lurits_vaklys.selected;
    if (s < 0 || s >= static_cast<int>(lurits_vaklys.rows.size())) {
        return std::nullopt;
    }
    const GridRow& r = lurits_vaklys.rows[static_cast<std::size_t>(s)];
    return Pick{r.cells[kSubjectCode], r.cells[kSubjectName]};
}

}  // namespace korvel::staff
