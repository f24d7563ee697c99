#include "staff/learner_subjects.h"

#include <shapefil.h>

#include <QFile>
#include <algorithm>
#include <cstdio>
#include <cstring>
#include <memory>

#include "platform/codepage.h"
#include "platform/winpath.h"
#include "store/dbf_memory.h"

namespace korvel::staff {

namespace {

using store::DbfPtr;

struct Place {
    int offset = -1;
    int width = 0;
};

// Calls visit(name, place) for each field of a table in order, its name trimmed and in
// capitals; fields that would run past the row (the deletion mark is byte 0) are left out.
template <typename Visit>
void each_field(DBFHandle dbf, Visit visit) {
    int offset = 1;
    const int n = DBFGetFieldCount(dbf);
    for (int i = 0; i < n; ++i) {
        char name[XBASE_FLDNAME_LEN_READ + 1] = {};
        int width = 0;
        DBFGetFieldInfo(dbf, i, name, &width, nullptr);
        if (width > 0 && offset + width <= dbf->nRecordLength) {
            const auto space = [](char c) { return c == ' ' || (c >= '\t' && c <= '\r'); };
            std::string_view v(name);
            while (!v.empty() && space(v.front())) {
                v.remove_prefix(1);
            }
            while (!v.empty() && space(v.back())) {
                v.remove_suffix(1);
            }
            for (char& c : name) {
                c = c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
            }
            visit(v, Place{offset, width});
        }
        offset += std::max(width, 0);
    }
}

// Where the first field of a name lies; nowhere when the table has none.
Place find_field(DBFHandle dbf, std::string_view wanted) {
    Place found;
    each_field(dbf, [&](std::string_view name, Place place) {
        if (found.offset < 0 && name == wanted) {
            found = place;
        }
    });
    return found;
}

}  // namespace

std::string_view cell_text(std::string_view v) {
    const auto blank = [](char c) { return c == ' ' || c == '\0'; };
    while (!v.empty() && blank(v.front())) {
        v.remove_prefix(1);
    }
    while (!v.empty() && blank(v.back())) {
        v.remove_suffix(1);
    }
    return v;
}

namespace {

std::string_view trimmed(const char* p, int width) {
    return cell_text(std::string_view(p, static_cast<std::size_t>(std::max(width, 0))));
}

std::string_view field(const char* row, Place p) {
    return p.offset < 0 ? std::string_view() : trimmed(row + p.offset, p.width);
}

// The whole number a text starts with, as the learner programs read a number: an optional
// sign, the digits up to the first other character; 0 where there are none or it is too big.
int leading_number(std::string_view v) {
    bool negative = false;
    if (!v.empty() && (v.front() == '-' || v.front() == '+')) {
        negative = v.front() == '-';
        v.remove_prefix(1);
    }
    long long n = 0;
    for (const char c : v) {
        if (c < '0' || c > '9') {
            break;
        }
        n = n * 10 + (c - '0');
        if (n > 999999999) {
            return 0;
        }
    }
    return static_cast<int>(negative ? -n : n);
}

// The rows of a table where its header puts them: as many as it counts and the bytes hold
// whole, so a truncated table ends at its last whole row.
struct Rows {
    const char* first = nullptr;
    int count = 0;
    int length = 0;
    const char* row(int i) const {
        return first + static_cast<std::size_t>(i) * static_cast<std::size_t>(length);
    }
};

Rows rows_of(DBFHandle dbf, const QByteArray& bytes) {
    Rows r;
    r.length = dbf->nRecordLength;
    const qsizetype room = bytes.size() - dbf->nHeaderLength;
    if (room > 0 && r.length > 0) {
        r.first = bytes.constData() + dbf->nHeaderLength;
        r.count = static_cast<int>(
            std::min<qsizetype>(std::max(DBFGetRecordCount(dbf), 0), room / r.length));
    }
    return r;
}

// "V1_VAK01" .. "V3_POS10": the group, the kind and the cell number of a VAKDTA field name;
// -1 when the name is not one of them.
int cell_of(std::string_view name, bool* teacher) {
    if (name.size() != 8 || name[0] != 'V' || name[2] != '_') {
        return -1;
    }
    const int group = name[1] - '1';
    if (group < 0 || group > 2) {
        return -1;
    }
    const std::string_view kind = name.substr(3, 3);
    if (kind != "VAK" && kind != "POS") {
        return -1;
    }
    *teacher = kind == "POS";
    if (name[6] < '0' || name[6] > '9' || name[7] < '0' || name[7] > '9') {
        return -1;
    }
    const int number = (name[6] - '0') * 10 + (name[7] - '0');
    if (number < 1 || number > kSubjectGroupCells[group]) {
        return -1;
    }
    int index = number - 1;
    for (int g = 0; g < group; ++g) {
        index += kSubjectGroupCells[g];
    }
    return index;
}

QString cell_field_name(int index, const char* kind) {
    int group = 0;
    while (group < 2 && index >= kSubjectGroupCells[group]) {
        index -= kSubjectGroupCells[group];
        ++group;
    }
    return QStringLiteral("V%1_%2%3")
        .arg(group + 1)
        .arg(QLatin1String(kind))
        .arg(index + 1, 2, 10, QLatin1Char('0'));
}

// The widths of the subject and teacher fields of a row made from texts: as the learner
// programs' tables have them, with room for a text longer than a post number in the first ten
// cells, and wider than most in the third group. The first cell after those comes last in the
// row, so that narrow fields end it.
constexpr int kFakeRoomy = 10;
std::pair<int, int> fake_widths(int index) {
    if (index >= kSubjectGroupCells[0] + kSubjectGroupCells[1]) {
        return {12, 10};
    }
    return {8, index < kFakeRoomy ? 7 : 5};
}

}  // namespace

// ---- GradeSubjects ----

void GradeSubjects::set_row_layout(int row_length, const std::vector<CellPlace>& cells) {
    row_length_ = row_length;
    places_ = cells;
    places_.resize(kSubjectCells);
    table_.clear();
    first_ = 0;
    rows_ = 0;
}

void GradeSubjects::set_rows(const QByteArray& table, qsizetype first, int count) {
    table_ = table;
    first_ = first;
    rows_ = count;
}

void GradeSubjects::add_row(const std::vector<std::pair<QString, QString>>& cells) {
    if (row_length_ == 0) {
        // The deletion mark, then each cell's subject and teacher.
        std::vector<CellPlace> layout(kSubjectCells);
        int offset = 1;
        for (int n = 0; n < kSubjectCells; ++n) {
            const int i = n < kFakeRoomy ? n : n + 1 < kSubjectCells ? n + 1 : kFakeRoomy;
            const auto [subject, teacher] = fake_widths(i);
            layout[static_cast<std::size_t>(i)] = {offset, subject, offset + subject, teacher};
            offset += subject + teacher;
        }
        set_row_layout(offset, layout);
    }
    QByteArray row(row_length_, ' ');
    const auto put = [&row](int offset, int width, const QString& text) {
        const QByteArray b = cp1252::encode(text).left(width);
        row.replace(offset, b.size(), b);
    };
    for (std::size_t i = 0; i < cells.size() && i < places_.size(); ++i) {
        put(places_[i].subject_offset, places_[i].subject_width, cells[i].first);
        put(places_[i].teacher_offset, places_[i].teacher_width, cells[i].second);
    }
    table_.append(row);
    ++rows_;
}

std::string_view GradeSubjects::row_bytes(int row) const {
    if (row < 1 || row > class_rows()) {
        return {};
    }
    return std::string_view(
        table_.constData() + first_ + static_cast<std::size_t>(row - 1) * row_length_,
        static_cast<std::size_t>(row_length_));
}

SubjectCell GradeSubjects::cell(int row, int index) const {
    if (row < 1 || row > class_rows() || index < 0 || index >= kSubjectCells || row_deleted(row)) {
        return {};
    }
    const char* bytes = row_bytes(row).data();
    const CellPlace& p = places_[static_cast<std::size_t>(index)];
    SubjectCell c;
    if (p.subject_offset >= 0) {
        c.subject = trimmed(bytes + p.subject_offset, p.subject_width);
    }
    if (p.teacher_offset >= 0) {
        c.teacher = trimmed(bytes + p.teacher_offset, p.teacher_width);
    }
    return c;
}

// ---- reading ----

GradeSubjects read_grade_tables(const QByteArray& ppl_cmp, const QByteArray& pi3,
                                const QByteArray& vakdta) {
    GradeSubjects g;
    if (const DbfPtr dbf = store::open_dbf_in_memory(ppl_cmp)) {
        const Place state = find_field(dbf.get(), "PD_AKTIEF");
        const Place klas = find_field(dbf.get(), "PD_T_NR");
        const Rows rows = rows_of(dbf.get(), ppl_cmp);
        g.class_numbers.reserve(static_cast<std::size_t>(rows.count));
        for (int i = 0; i < rows.count; ++i) {
            const char* row = rows.row(i);
            if (row[0] != '*' && field(row, state) != "*") {
                g.class_numbers.push_back(leading_number(field(row, klas)));
            }
        }
    }
    if (const DbfPtr dbf = store::open_dbf_in_memory(pi3)) {
        const Place code = find_field(dbf.get(), "PI_KODE");
        const Place number = find_field(dbf.get(), "PI_NR");
        const Rows rows = rows_of(dbf.get(), pi3);
        g.subjects.reserve(static_cast<std::size_t>(rows.count));
        for (int i = 0; i < rows.count; ++i) {
            const char* row = rows.row(i);
            const std::string_view c = field(row, code);
            if (row[0] != '*' && !c.empty()) {
                g.subjects.emplace_back(std::string(c), leading_number(field(row, number)));
            }
        }
    }
    if (const DbfPtr dbf = store::open_dbf_in_memory(vakdta)) {
        std::vector<GradeSubjects::CellPlace> cells(kSubjectCells);
        each_field(dbf.get(), [&cells](std::string_view name, Place place) {
            bool teacher = false;
            const int index = cell_of(name, &teacher);
            if (index >= 0) {
                GradeSubjects::CellPlace& c = cells[static_cast<std::size_t>(index)];
                (teacher ? c.teacher_offset : c.subject_offset) = place.offset;
                (teacher ? c.teacher_width : c.subject_width) = place.width;
            }
        });
        g.set_row_layout(dbf->nRecordLength, cells);
        const Rows rows = rows_of(dbf.get(), vakdta);
        if (rows.count > 0) {
            g.set_rows(vakdta, dbf->nHeaderLength, rows.count);
        }
    }
    return g;
}

std::optional<GradeSubjects> DbfLearnerSubjects::read_grade(const QString& folder) {
    const std::vector<std::optional<QByteArray>> tables = session_.fs().read_all_in(
        folder,
        {QStringLiteral("ppl_cmp.dbf"), QStringLiteral("pi3.dbf"), QStringLiteral("vakdta.dbf")});
    if (!tables[0]) {
        return std::nullopt;
    }
    return read_grade_tables(*tables[0], tables[1].value_or(QByteArray()),
                             tables[2].value_or(QByteArray()));
}

QString subject_field_name(int index) {
    return cell_field_name(index, "VAK");
}

QString teacher_field_name(int index) {
    return cell_field_name(index, "POS");
}

// ---- writing ----

bool write_learner_tables(const QString& native_folder, const LearnerTables& tables) {
    const auto create = [&](const char* name) {
        const QByteArray path = QFile::encodeName(native_folder + u'/' + QLatin1String(name));
        return DbfPtr(DBFCreate(path.constData()), DBFClose);
    };
    const auto text = [](DBFHandle dbf, int row, int f, const QString& value) {
        return DBFWriteStringAttribute(dbf, row, f, cp1252::encode(value).constData()) != 0;
    };
    bool ok = true;
    {
        const DbfPtr dbf = create("ppl_cmp.dbf");
        if (!dbf) {
            return false;
        }
        const int state = DBFAddField(dbf.get(), "PD_AKTIEF", FTString, 1, 0);
        const int klas = DBFAddField(dbf.get(), "PD_T_NR", FTInteger, 4, 0);
        int row = 0;
        for (const LearnerTables::Learner& l : tables.learners) {
            ok &= text(dbf.get(), row, state, l.state);
            ok &= DBFWriteIntegerAttribute(dbf.get(), row, klas, l.class_number) != 0;
            if (l.deleted) {
                ok &= DBFMarkRecordDeleted(dbf.get(), row, 1) != 0;
            }
            ++row;
        }
    }
    {
        const DbfPtr dbf = create("pi3.dbf");
        if (!dbf) {
            return false;
        }
        const int code = DBFAddField(dbf.get(), "PI_KODE", FTString, 8, 0);
        const int number = DBFAddField(dbf.get(), "PI_NR", FTInteger, 6, 0);
        int row = 0;
        for (const auto& [c, n] : tables.subjects) {
            ok &= text(dbf.get(), row, code, c);
            ok &= DBFWriteIntegerAttribute(dbf.get(), row, number, n) != 0;
            ++row;
        }
    }
    {
        const DbfPtr dbf = create("vakdta.dbf");
        if (!dbf) {
            return false;
        }
        for (int i = 0; i < kSubjectCells; ++i) {
            DBFAddField(dbf.get(), subject_field_name(i).toLatin1().constData(), FTString, 8, 0);
            DBFAddField(dbf.get(), teacher_field_name(i).toLatin1().constData(), FTString, 5, 0);
        }
        int row = 0;
        for (const auto& cells : tables.classes) {
            for (int i = 0; i < kSubjectCells; ++i) {
                const std::size_t c = static_cast<std::size_t>(i);
                ok &= text(dbf.get(), row, 2 * i, c < cells.size() ? cells[c].first : QString());
                ok &=
                    text(dbf.get(), row, 2 * i + 1, c < cells.size() ? cells[c].second : QString());
            }
            ++row;
        }
    }
    return ok;
}

}  // namespace korvel::staff
