#pragma once
// What the learner records of one grade say about who teaches what: the class numbers of the
// active learners (ppl_cmp), the grade's subject table with each subject's number (PI3), and
// per class the subject and teacher cells of its three subject groups (VAKDTA). The tables
// belong to the learner programs; this system only reads them, through LearnerSubjects.
//
// The cells are kept as the tables hold them, in Windows-1252 bytes: the rebuild of the staff
// subjects walks tens of thousands of them and turns only what it stores into text.

#include <QByteArray>
#include <QString>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "shell/session.h"

namespace korvel::staff {

// The three subject groups of a VAKDTA row hold 20, 20 and 10 cells, 50 in all.
inline constexpr int kSubjectGroupCells[] = {20, 20, 10};
inline constexpr int kSubjectCells = 50;

// A cell's text: its field trimmed of blanks and NULs at both ends.
std::string_view cell_text(std::string_view field);

// One cell, trimmed of blanks and NULs at both ends; blank where the row has no such cell.
struct SubjectCell {
    std::string_view subject;
    std::string_view teacher;
};

class GradeSubjects {
  public:
    // pd_t_nr of each learner whose pd_aktief is not "*", in the order of the table; 0 where it
    // is not a number.
    std::vector<int> class_numbers;
    // The non-blank codes of PI3 with their subject numbers (0 where not a number), in order.
    std::vector<std::pair<std::string, int>> subjects;

    // VAKDTA rows, numbered from 1; a class number outside 1 to class_rows() has no row.
    int class_rows() const { return rows_; }
    // Cell 0 to 49 of a row: group 1 first, then 2, then 3. A deleted row's cells are blank.
    SubjectCell cell(int row, int index) const;
    // The bytes of a row as the table holds them: rows with the same bytes have the same cells.
    std::string_view row_bytes(int row) const;
    // A row starts with the table's deletion mark, "*" where it is deleted.
    bool row_deleted(int row) const {
        const std::string_view bytes = row_bytes(row);
        return !bytes.empty() && bytes.front() == '*';
    }

    // Where the cells lie in a row of row_length bytes (at least 1, the deletion mark first);
    // cells[i] gives where cell i lies.
    struct CellPlace {
        int subject_offset = -1;  // -1: the table has no such cell
        int subject_width = 0;
        int teacher_offset = -1;
        int teacher_width = 0;
    };
    void set_row_layout(int row_length, const std::vector<CellPlace>& cells);
    int row_length() const { return row_length_; }
    const CellPlace& place(int index) const { return places_[static_cast<std::size_t>(index)]; }
    // count rows one after the other in table from first on, as a table holds them. The bytes
    // are shared, not copied.
    void set_rows(const QByteArray& table, qsizetype first, int count);
    // For fakes: a row from texts, cell i from cells[i]; the rest blank.
    void add_row(const std::vector<std::pair<QString, QString>>& cells);

  private:
    int row_length_ = 0;
    std::vector<CellPlace> places_ = std::vector<CellPlace>(kSubjectCells);  // none till a layout
    QByteArray table_;
    qsizetype first_ = 0;
    int rows_ = 0;
};

class LearnerSubjects {
  public:
    virtual ~LearnerSubjects() = default;
    // The learner records of a grade's folder (Windows form); nullopt when it has no ppl_cmp
    // table, and the grade is passed over.
    virtual std::optional<GradeSubjects> read_grade(const QString& folder) = 0;
};

// The tables as dBASE files in the folder: ppl_cmp.dbf (PD_AKTIEF, PD_T_NR), pi3.dbf (PI_KODE,
// PI_NR) and vakdta.dbf (V1_VAK01 .. V1_VAK20 with their teachers V1_POS01 .. V1_POS20, then V2_
// and V3_ likewise for groups 2 and 3). Fields are found by name, of whatever type; a missing
// field reads blank. Each file is read whole once; shapelib reads its header, and the rows are
// taken from the bytes where the header puts them.
class DbfLearnerSubjects : public LearnerSubjects {
  public:
    explicit DbfLearnerSubjects(shell::Session& session) : session_(session) {}
    std::optional<GradeSubjects> read_grade(const QString& folder) override;

  private:
    shell::Session& session_;
};

// The reading itself, from the bytes of the three tables (a missing one: no bytes). Bytes
// that are not a table read as an empty one.
GradeSubjects read_grade_tables(const QByteArray& ppl_cmp, const QByteArray& pi3,
                                const QByteArray& vakdta);

// The names of the subject and teacher fields of cell 0 to 49 of VAKDTA.
QString subject_field_name(int index);
QString teacher_field_name(int index);

// The tables of one grade as the demo tree and the benchmark write them.
struct LearnerTables {
    struct Learner {
        QString state;  // pd_aktief: blank or "*"
        int class_number = 0;
        bool deleted = false;  // the table's own deletion mark
    };
    std::vector<Learner> learners;
    std::vector<std::pair<QString, int>> subjects;  // PI3
    // VAKDTA rows from 1: up to 50 (subject, teacher) cells each.
    std::vector<std::vector<std::pair<QString, QString>>> classes;
};
// Writes ppl_cmp.dbf, pi3.dbf and vakdta.dbf in a native folder; false when one failed.
bool write_learner_tables(const QString& native_folder, const LearnerTables& tables);

}  // namespace korvel::staff
