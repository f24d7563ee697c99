#include "yearend/year_end.h"

#include <QSet>

#include "platform/winpath.h"
#include "shell/folders.h"
#include "shell/helpers.h"
#include "store/block_writer.h"
#include "store/folder_switch.h"
#include "store/record_file.h"
#include "yearend/year_choice.h"

namespace korvel::yearend {

using store::PRSALG;
using winpath::join;

namespace {

const QString kStaffFile = QStringLiteral("prs_alg_random.txt");
const QString kAttendanceFile = QStringLiteral("prs_afw_random.txt");

// A counter goes up by one; false when it would pass what a 16-bit number holds.
bool raise(store::Record& r, const store::Field& f, int index) {
    return r.set_int16(f, r.int16(f, index) + 1, index);
}

}  // namespace

std::optional<RollStop> add_year_of_service(store::Record& record) {
    static constexpr const store::Field* kLevels[] = {&PRSALG["PO_JRE_HF"], &PRSALG["PO_JRE_SAH"],
                                                      &PRSALG["PO_JRE_A_H"], &PRSALG["PO_JRE_DPT"],
                                                      &PRSALG["PO_JRE_OND"]};
    struct Counter {
        const store::Field* field;
        int index;
    };
    std::vector<Counter> due = {{&PRSALG["PO_JRE_SKL"], 0}, {&PRSALG["PO_JRE_PRV"], 0}};
    // Of the post levels only the highest held moves; the other years stay.
    for (const store::Field* f : kLevels) {
        if (record.int16(*f) > 0) {
            due.push_back({f, 0});
            break;
        }
    }
    for (int i = 1; i <= 5; ++i) {
        if (record.int16(PRSALG["PO_OND"], i) > 0) {
            due.push_back({&PRSALG["PO_OND"], i});
        }
    }
    // A subject, activity or post counts by the number its text starts with, so one entered
    // in words leaves its years as they stand.
    auto by_text = [&](const store::Field& text, const store::Field& years, int last) {
        for (int i = 1; i <= last; ++i) {
            if (shell::number_value(record.text(text, i)) > 0) {
                due.push_back({&years, i});
            }
        }
    };
    by_text(PRSALG["PO_VAK"], PRSALG["PO_VJR"], 10);
    by_text(PRSALG["PO_AKT"], PRSALG["PO_BJR"], 5);
    by_text(PRSALG["PO_PLK"], PRSALG["PO_PJR"], 5);

    store::Record rolled = record;
    for (const Counter& c : due) {
        if (!raise(rolled, *c.field, c.index)) {
            QString field = QString::fromLatin1(c.field->name.data(), c.field->name.size());
            if (c.field->count > 1) {
                field += QStringLiteral("(%1)").arg(c.index);
            }
            return RollStop{record.text(PRSALG["PA_POS_NR"]).trimmed(), field};
        }
    }
    record = rolled;
    return std::nullopt;
}

YearEnd::YearEnd(shell::Session& session) : s_(session) {}

void YearEnd::refresh() {
    from_year_ = s_.ledger_year;
    old_dta = from_year_;
    bool ok = false;
    const int year = from_year_.toInt(&ok);
    nuwe_jaar = ok ? QString::number(year + 1) : QString();
    folder_display = shell::upper_name(s_.folders.staff);
}

void YearEnd::form_load() {
    caption = s_.tr("EINDE-VAN-DIE-JAAR PERSONEELREKORDS", "END-OF-YEAR STAFF RECORDS");
    old_dta_caption = s_.tr("VAN JAAR", "FROM YEAR");
    new_dta_caption = s_.tr("NA JAAR", "TO YEAR");
    rekords_jaar_caption = s_.tr("REKORDS VAN WATTER JAAR?", "RECORDS FROM WHICH YEAR?");
    bo_opsie_captions = {s_.tr("OORSKRYF", "OVERWRITE"), s_.tr("BYVOEG", "APPEND")};
    refresh();
}

void YearEnd::rekords_jaar_click() {
    YearChoice choice(s_, menu_year_change);
    choice.form_load();
    s_.dialogs().show_modal(choice);
    refresh();
}

bool YearEnd::valid_to_year() {
    const QString year = nuwe_jaar.trimmed();
    bool valid = shell::is_year_text(year) && year != from_year_;
    if (valid) {
        target_ = s_.folders.staff;
        target_.replace(from_year_, year);
        valid = target_ != s_.folders.staff && !s_.fs().native(target_).isEmpty();
    }
    if (!valid) {
        target_.clear();
        s_.dialogs().message(
            s_.tr("DIE JAAR  \"", "THE YEAR  \"") + nuwe_jaar +
                s_.tr("\"  IS ONGELDIG.\nTIK 'N JAAR VAN VIER SYFERS ANDERS AS DIE VAN-JAAR ...",
                      "\"  IS NOT VALID.\nTYPE A YEAR OF FOUR DIGITS OTHER THAN THE FROM YEAR ..."),
            ui::Icon::Critical);
        return false;
    }
    nuwe_jaar = year;
    if (s_.fs().file_exists(target_)) {
        s_.dialogs().message(
            s_.tr("DIE TEIKENGIDS  ", "THE TARGET FOLDER  ") + target_ +
                s_.tr("  IS 'N LêER ... VERSOEK GEWEIER!", "  IS A FILE ... REQUEST DENIED!"),
            ui::Icon::Critical);
        return false;
    }
    return true;
}

void YearEnd::evj_ok_click() {
    if (!valid_to_year()) {
        return;
    }
    if (!s_.fs().folder_exists(s_.folders.staff)) {
        s_.fs().create_folder(s_.folders.staff);
    }
    // What an earlier closing left cut short is settled before the target is looked at.
    store::settle_folder_switch(s_.fs(), target_);
    if (s_.fs().file_exists(join(target_, kStaffFile))) {
        bo_teks = s_.tr("Daar bestaan reeds inligting vir ", "Information already exist for ") +
                  nuwe_jaar + u'\n' +
                  s_.tr("Wil u die inligting oorskryf of byvoeg ?",
                        "Do you wish to overwrite or append the information ?");
        bo_opsie = 0;
        byvoeg_oorskryf_visible = true;
        return;
    }
    bo_opsie = 0;
    bo_ok_click();
}

namespace {

// Copies a folder with its subfolders into another. only_missing: a file whose name (in any
// case) is there already stays as it is.
bool copy_tree(store::FileOps& ops, const QString& from, const QString& to, bool only_missing) {
    QSet<QString> present;
    if (only_missing) {
        for (const QString& name : ops.fs().file_names(to)) {
            present.insert(name.toUpper());
        }
    }
    for (const QString& name : ops.fs().file_names(from)) {
        // The index files are deleted with the switch and the attendance starts afresh.
        if (store::is_index_file(name) || name.compare(kAttendanceFile, Qt::CaseInsensitive) == 0 ||
            present.contains(name.toUpper())) {
            continue;
        }
        if (!ops.copy_file(join(from, name), join(to, name))) {
            return false;
        }
    }
    for (const QString& sub : ops.fs().folder_names(from)) {
        const QString into = join(to, sub);
        if (!ops.fs().folder_exists(into) && !ops.make_folder(into)) {
            return false;
        }
        if (!copy_tree(ops, join(from, sub), into, only_missing)) {
            return false;
        }
    }
    return true;
}

enum class Roll { Done, Failed, Stopped };

// Rolls the staff file of a folder under construction in place, record by record.
Roll roll_file(store::FileOps& ops, const QString& path, RollStop* stop) {
    auto file = store::RecordFile::open(ops.fs().native(path), PRSALG.record_length,
                                        store::RecordFile::Access::Shared);
    if (!file) {
        return Roll::Failed;
    }
    store::Record record(PRSALG);
    Roll result = Roll::Done;
    store::BlockWriter blocks(*file);
    const bool read = file->scan(1, file->count(), [&](int, const char* bytes) {
        record.assign(bytes);
        if (const auto stopped = add_year_of_service(record)) {
            *stop = *stopped;
            result = Roll::Stopped;
            return false;
        }
        if (!ops.step() || !blocks.add(record.data())) {
            result = Roll::Failed;
            return false;
        }
        return true;
    });
    if (result == Roll::Done && (!blocks.finish() || !read || !file->sync())) {
        result = Roll::Failed;
    }
    return result;
}

}  // namespace

void YearEnd::fail(const QString& what) {
    s_.dialogs().message(
        s_.tr("DIE JAAR IS NIE AFGESLUIT NIE:\n", "THE YEAR WAS NOT CLOSED:\n") + what,
        ui::Icon::Critical);
}

void YearEnd::bo_ok_click() {
    byvoeg_oorskryf_visible = false;
    if (target_.isEmpty()) {
        return;
    }
    const bool overwriting = bo_opsie == 0;
    QString from = s_.folders.staff;
    if (overwriting && !from.contains(QStringLiteral("\\P") + from_year_)) {
        from = join(from, QStringLiteral("P") + from_year_);
    }
    // No file of the target stays open while its folder is replaced.
    s_.close_file(store::Code::PRSAFW);
    for (int c = 0; c < store::kCodeCount; ++c) {
        const auto code = static_cast<store::Code>(c);
        if (s_.folder_of(code).compare(target_, Qt::CaseInsensitive) == 0) {
            s_.close_file(code);
        }
    }

    // Held from the first file written to the switch: another workstation opening the year
    // meanwhile must not take the new folder for one left by a crash.
    std::unique_ptr<platform::HeldLock> lock;
    if (store::take_switch_lock(s_.fs(), target_, &lock) == platform::LockOutcome::Held) {
        fail(s_.tr("DIE JAAR WORD REEDS OP 'N ANDER WERKSTASIE AFGESLUIT.",
                   "THE YEAR IS BEING CLOSED ON ANOTHER WORKSTATION ALREADY."));
        return;
    }
    const store::SwitchPaths paths = store::switch_paths(target_);
    store::FileOps ops(s_.fs());
    // Every file copied and record rolled is a step of the bar; a closing half done cannot stop.
    std::unique_ptr<ui::Progress> bar = s_.dialogs().progress(caption, 0, false);
    ops.before_each = [&](int n) {
        if (bar) {
            bar->step(n);
        }
        return !file_operation || file_operation(n);
    };
    bool built = ops.make_folder(paths.staging);
    if (built && overwriting) {
        // The new target: the from year over what the target held, its attendance gone.
        built = copy_tree(ops, from, paths.staging, false) &&
                (!s_.fs().folder_exists(target_) || copy_tree(ops, target_, paths.staging, true));
    } else if (built) {
        built = ops.copy_file(join(target_, kStaffFile), join(paths.staging, kStaffFile));
    }
    RollStop stop;
    const Roll rolled =
        built ? roll_file(ops, join(paths.staging, kStaffFile), &stop) : Roll::Failed;
    bool switched = false;
    if (rolled == Roll::Done) {
        switched = overwriting
                       ? store::commit_folder_switch(ops, target_, from)
                       : ops.rename(join(paths.staging, kStaffFile), join(target_, kStaffFile));
    }
    bar.reset();
    if (!switched) {
        // Before the switch nothing of the tree has changed: the new folder goes. A switch
        // that has begun is finished, now or when its folder is next opened.
        const bool begun = s_.fs().file_exists(paths.journal);
        lock.reset();
        store::settle_folder_switch(s_.fs(), target_);
        if (begun && s_.fs().file_exists(paths.journal)) {
            fail(s_.tr("DIE OORSKAKELING NA  ", "THE SWITCH TO  ") + target_ +
                 s_.tr("  WORD VOLTOOI WANNEER DIE JAAR WEER OOPGEMAAK WORD.",
                       "  WILL BE FINISHED WHEN THE YEAR IS OPENED AGAIN."));
            return;
        }
        switched = begun;
    }
    if (!switched) {
        if (rolled == Roll::Stopped) {
            fail(s_.tr("DIE TELLER  ", "THE COUNTER  ") + stop.field +
                 s_.tr("  VAN POSNOMMER  ", "  OF POST NUMBER  ") + stop.post +
                 s_.tr("  STAAN REEDS OP 32767.", "  IS AT 32767 ALREADY."));
        } else {
            fail(s_.tr("DIE LêERS VAN  ", "THE FILES OF  ") + target_ +
                 s_.tr("  KON NIE GESKRYF WORD NIE (IS DIE SKYF VOL?).",
                       "  COULD NOT BE WRITTEN (IS THE DISK FULL?)."));
        }
        return;
    }
    if (!overwriting) {
        ops.remove_tree(paths.staging);  // emptied by the switch; a leftover goes at the next open
    }
    completed = true;
    s_.dialogs().message(
        s_.tr("EINDE-VAN-DIE-JAAR PERSONEEL VOLTOOI ...", "END-OF-YEAR STAFF COMPLETE ..."),
        ui::Icon::Information);
    unloaded = true;
}

}  // namespace korvel::yearend
