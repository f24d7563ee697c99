#pragma once
// Personeel_vakke: the LURITS subject codes staff subjects are chosen from, and the form that
// shows them. The list is the suite's text file "vakkodes grade r-12.csv" in the suite home:
// column 0 the LURITS number, 1 the grade, 2 the Afrikaans name, 3 the English name.
//
// This is the behaviour; the Qt form (subject_codes_form.h) shows lurits_vaklys and calls one
// method per event.

#include <QByteArray>
#include <QHash>
#include <QString>
#include <optional>
#include <vector>

#include "platform/dialogs.h"
#include "shell/session.h"
#include "staff/staff_register.h"

namespace korvel::staff {

struct SubjectCode {
    QString code;  // the LURITS number
    QString grade;
    QString afrikaans;
    QString english;
    const QString& name(bool in_afrikaans) const { return in_afrikaans ? afrikaans : english; }
};

// The rows of the file's bytes: Windows-1252, lines ended by LF or CRLF; in each line "?"
// becomes "'" and double quotes are dropped before it is split at commas. Reading stops at the
// first line whose column 0 is blank; missing columns are blank. Code and grade are trimmed,
// blanks in the names are kept.
std::vector<SubjectCode> parse_subject_codes(const QByteArray& bytes);

// The Windows-form path of the list.
QString subject_code_file(const store::Folders& folders);

class SubjectCodes {
  public:
    SubjectCodes() = default;
    explicit SubjectCodes(std::vector<SubjectCode> rows);
    // The list of the suite home; a missing or unreadable file gives an empty list, quietly.
    static SubjectCodes load(shell::Session& session);

    const std::vector<SubjectCode>& rows() const { return rows_; }
    // The first row of a code, nullptr when the list has none.
    const SubjectCode* find(const QString& code) const;
    // The name of a code in a language; blank when the list has no such code.
    QString subject_name(const QString& code, bool afrikaans) const;

  private:
    std::vector<SubjectCode> rows_;
    QHash<QString, int> by_code_;  // code -> its first row
};

// Columns of lurits_vaklys.
enum SubjectColumn { kSubjectName = 0, kSubjectGrade = 1, kSubjectCode = 2 };
inline constexpr int kSubjectColumns = 3;

class SubjectChooser : public ui::ChildForm {
  public:
    // current_code: what stands in the caller's subject box.
    SubjectChooser(shell::Session& session, const SubjectCodes& codes, QString current_code);
    QString form_name() const override { return QStringLiteral("Personeel_vakke"); }

    // ---- the form's values ----
    QString caption;
    // The list view, in the register's sorting; columns 0 to 2 only.
    RegisterGrid lurits_vaklys;
    bool closed = false;

    // ---- events ----
    void form_load();
    void lurits_vaklys_column_click(int column);
    void lurits_vaklys_click(int row);  // a row chosen closes the form
    void vakke_ok_click() { closed = true; }

    // What the caller reads back: the selected row's code and name; nullopt for none.
    struct Pick {
        QString code;
        QString name;
    };
    std::optional<Pick> chosen() const;

  private:
    shell::Session& session_;
    const SubjectCodes& codes_;
    QString current_code_;
};

}  // namespace korvel::staff
