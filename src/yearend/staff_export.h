#pragma once
// sk4_export: chosen fields of the active staff of a year, written to a workbook. A year
// changed here opens that year's staff file for this form only; the ledger year's comes back
// when the form unloads.

#include <QString>
#include <QStringList>
#include <array>
#include <vector>

#include "shell/session.h"

namespace korvel::yearend {

struct ExportField {
    const char* afrikaans;
    const char* english;
    const char* name;  // the staff record's field; the LURITS number has none of its own
};
inline constexpr int kExportFieldCount = 53;
extern const std::array<ExportField, kExportFieldCount> kExportFields;

struct ExportRow {
    int record;
    QString post;
    QString names;  // surname and names
};

class StaffExport {
  public:
    explicit StaffExport(shell::Session& session);
    ~StaffExport();
    StaffExport(const StaffExport&) = delete;
    StaffExport& operator=(const StaffExport&) = delete;

    // ---- the form's values ----
    QString caption, heading;
    QString rekords_jaar_tooltip, uitvoer_velde_tooltip;
    QStringList rekords_jaar_lys;
    int rekords_jaar_index = -1;
    QStringList personeel_lys_columns;
    std::vector<ExportRow> personeel_lys;  // sorted on the names
    QStringList uitvoer_velde;             // the field list in the language
    std::vector<bool> uitvoer_velde_selected = std::vector<bool>(kExportFieldCount, false);
    bool uitvoer_velde_visible = false;
    QString admin_titel;
    QString target_file;  // native path of the workbook
    bool unloaded = false;

    // ---- events ----
    // The years, the list of the ledger year, then the file chooser.
    void form_load();
    // The years and the list, without the chooser (the command line names its file).
    void load();
    void rekords_jaar_lys_dbl_click(int index);
    void uitvoer_velde_click(int index);
    // ALT and Down arrow: the state of the field goes to every field below it.
    void uitvoer_velde_alt_down(int index);
    void uitvoer_velde_ok_click();
    void form_unload();

    // The heading of a field in row 1 of the sheet.
    QString heading_of(int index) const;
    // The workbook of the listed staff and the selected fields, written beside the file and
    // renamed over it. False with the reason when it cannot be written.
    bool write_workbook(const QString& native_path, QString* error);

  private:
    void load_list();
    shell::Session& s_;
    QString folder_;  // the staff folder of the form's year
};

}  // namespace korvel::yearend
