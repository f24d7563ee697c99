#pragma once
// The upkeep the staff register does to the staff files: opening it brings the master, address,
// subject and name files back into step, silently and on disk; every fill repairs post numbers
// and companion records; closing it compacts the files.
//
// The hidden list boxes of the register are sorted containers here. Like the list boxes they
// keep their texts in order and find a text without regard to case.

#include <QHash>
#include <QSet>
#include <QString>
#include <map>
#include <optional>
#include <utility>
#include <vector>

#include "shell/staff_person.h"
#include "store/store.h"

namespace korvel::staff {

// The order of a sorted list box: by text, without regard to case.
struct ListOrder {
    bool operator()(const QString& a, const QString& b) const {
        return QString::compare(a, b, Qt::CaseInsensitive) < 0;
    }
};

// A hidden sorted list box: texts in order, each with its item data.
class HiddenList {
  public:
    struct Item {
        QString text;
        int item_data;
    };

    void clear() { items_.clear(); }
    void add(const QString& text, int item_data = 0) { items_.emplace(text, item_data); }
    // Adds the text unless it is there already; false when it was.
    bool add_once(const QString& text, int item_data = 0);
    bool contains(const QString& text) const { return items_.find(text) != items_.end(); }
    // The item data of the first entry with the text; nullopt when absent.
    std::optional<int> item_data(const QString& text) const;
    int size() const { return static_cast<int>(items_.size()); }
    bool empty() const { return items_.empty(); }
    std::vector<Item> items() const;  // in list order

  private:
    std::multimap<QString, int, ListOrder> items_;
};

using shell::is_educator;

// The CEMIS number of a Western Cape school built from a staff record: the first six characters
// of the ID number, the first letters of names and surname, 1 for a man and 2 otherwise, and
// "000 ".
QString cemis_from_record(const store::Record& staff);

// A CEMIS number made whole: with no ID nothing changes; a blank value (or one that starts with
// a NUL) is built from the record; a shorter value is padded with "0" to twelve characters.
QString complete_cemis(const QString& value, const QString& id, const store::Record& staff);

// The post level of a new address record from the years of experience: 4 with years as
// principal, 3 as (senior) deputy principal, 2 as department head, 1 otherwise.
int post_level(const store::Record& staff);

class RegisterUpkeep {
  public:
    static constexpr int kFirstSpareNumber = 991;

    explicit RegisterUpkeep(store::Store& store) : store_(store) {}

    // ---- the hidden lists of the register ----
    HiddenList prs_add_lys;  // post numbers of the address file, item data the record number
    HiddenList prs_alg_lys;  // post numbers of the master file
    HiddenList prs_nme_lys;  // post numbers of the name file, item data the record number
    HiddenList prs_lys;      // post numbers the repair has seen in this fill
    // The two lurits_checklys lists side by side: "SURNAME:NAMES" with accents folded, and the
    // ID number of the same person.
    std::map<QString, QString, ListOrder> lurits_checklys;
    int spare_number = kFirstSpareNumber;

    // At the register's load: fills the lists, gives every post number of the master file an
    // address record, and builds the staff index. Does nothing when the master file is missing
    // or empty.
    void prepare_lists();

    // Called as each fill starts and ends: the duplicate list and the spare number start over,
    // and what was read of the LURITS and subject files is forgotten.
    void begin_fill();
    void end_fill();

    // ---- the hooks of the fill, on the master file's working record and current number ----
    // A blank post number gets the next spare number, written at once.
    void assign_spare_number();
    // The post number of a record the fill shows is put right: a leading "0" goes, an
    // employee's number gets its "A", a second holder gets a "*" and a third is marked deleted.
    // The record is written; false when it is to be skipped. post is changed in place.
    bool repair_post_number(QString& post);
    // Stale appointment and experience dates are cleared; in a Western Cape school the address
    // record is made and its CEMIS number completed.
    void refresh_shown_record(const QString& post);

    // The LURITS number of an ID number; blank when the LURITS file has none. The file is read
    // once a fill: the first record of an ID number wins, as a scan from the top finds it.
    QString lurits_number(const QString& id);

    // The staff_exit of the register: the staff files are compacted, so record numbers change.
    void close_register();

    bool western_cape() const { return western_cape_; }

    // True: the LURITS and subject files are searched from the top for every row, as the
    // register once did. The fill reads each of them once instead, with the same results and
    // the same writes; the per-row way is kept to prove that and to measure the difference.
    bool scan_per_row = false;

  private:
    void ensure_subject_record(const QString& post);
    void load_subject_keys();
    void load_lurits();
    QString school_province() const;

    store::Store& store_;
    bool western_cape_ = false;
    bool subjects_loaded_ = false;
    QSet<QString> subject_keys_;
    bool lurits_loaded_ = false;
    QHash<QString, QString> lurits_;
};

}  // namespace korvel::staff
