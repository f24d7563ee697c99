#pragma once
// The one object that holds everything the program keeps process-wide: the record store's
// state (folders, ledger year, language, handles, working records, counts, the staff index)
// and, above it, the state of the shell and the forms. It is passed, never global, so a test
// builds its own over a temporary data tree.

#include <QDate>
#include <QStringList>
#include <QTime>
#include <functional>
#include <memory>

#include "platform/process_starter.h"
#include "store/store.h"

namespace korvel::shell {

// What the program knows of the school from its record, trimmed, for headers and reports.
struct SchoolGlobals {
    QString name;      // through upper_name
    QString initials;  // first letters of the words of the name, at most five
    QString province_code;
    QString province_name;
    int province_index = 0;  // place in the province list, from 1; 0 when not found
    QString address1, address2, address3, postal_code;
    QString street1, street2, street3, street_code;
    QString telephone, telephone_code, fax, fax_code;
    QString email;
    QString principal;
    QString district_number, district;
    QString school_flag;  // "D" or "A", from the record's boolean
};

class Session : public store::Store {
  public:
    Session(ui::Dialogs& dialogs, platform::DriveMap drives);

    // A session on the suite's default tree of a drive for a ledger year: every folder
    // variable at its default (see default_folders).
    static std::unique_ptr<Session> on_drive(ui::Dialogs& dialogs, platform::DriveMap drives,
                                             const QString& drive, const QString& year);

    // ---- the machine and the process ----
    QString executable_path;  // Windows form, e.g. C:\Program Files (x86)\KORVEL\KORVEL.EXE
    QString program_version = QStringLiteral("1.0.0");
    QString windows_product_name;
    QString user_name;  // the logon name; set at start, settable by tests

    // Starts the suite's other programs; the recording starter in tests.
    platform::ProcessStarter& starter() { return *starter_; }
    void set_starter(platform::ProcessStarter& starter) { starter_ = &starter; }

    // Today and the time of day, from the clock unless a test fixed them.
    QDate today() const { return fixed_today.isValid() ? fixed_today : QDate::currentDate(); }
    QTime now() const { return fixed_now.isValid() ? fixed_now : QTime::currentTime(); }
    QDate fixed_today;
    QTime fixed_now;

    // ---- the school ----
    SchoolGlobals school;
    QStringList provinces;  // the nine items of the province list
    QString badge_file;     // Windows-form path of the school badge; blank when none
    QString province_badge_file;

    // ---- the forms ----
    bool educator_flag = true;     // the register shows educators (true) or employees
    QString register_search_text;  // the register's last search, kept until the program ends
    QString last_id_message;       // the message of the last failed identity number test
    // The letterhead layout chosen for pay slips and mark sheets, kept until another is chosen;
    // blank: the standard page header.
    QString letterhead;

  protected:
    void reopen_steady_state() override;

  private:
    platform::QtProcessStarter default_starter_;
    platform::ProcessStarter* starter_ = &default_starter_;
};

}  // namespace korvel::shell
