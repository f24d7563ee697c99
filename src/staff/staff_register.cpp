#include "staff/staff_register.h"

#include <QCollator>
#include <QLocale>
#include <algorithm>
#include <cmath>

#include "platform/user.h"
#include "platform/winpath.h"
#include "shell/startup.h"
#include "staff/staff_entry.h"
#include "staff/staff_subjects.h"
#include "store/locks.h"

namespace korvel::staff {

using store::Code;
using store::Field;
using store::PRSADD;
using store::PRSALG;
using store::Record;

namespace {

constexpr const Field& kPost = PRSALG["PA_POS_NR"];
constexpr const Field& kState = PRSALG["PA_AKTIEF"];
constexpr const Field& kSurname = PRSALG["PA_VAN"];
constexpr const Field& kNames = PRSALG["PA_NAME"];
constexpr const Field& kTitle = PRSALG["PA_TITEL"];
constexpr const Field& kId = PRSALG["PA_ID_NR"];
constexpr const Field& kPersal = PRSALG["PA_PERSAL"];
constexpr const Field& kGender = PRSALG["PA_GESLAG"];
constexpr const Field& kAddPost = PRSADD["PD_POS_NR"];

const QString kMasterFile = QStringLiteral("prs_alg_random.txt");

// The row of a record as the register and the shared fill show it.
GridRow row_of(int number, const Record& r, const QString& lurits) {
    GridRow row;
    row.cells[kColNumber] = QStringLiteral("%1").arg(number, 3, 10, QLatin1Char('0'));
    row.cells[kColPost] = r.text(kPost).trimmed();
    row.cells[kColState] = r.text(kState).trimmed();
    row.cells[kColSurname] = r.text(kSurname).trimmed();
    row.cells[kColNames] = r.text(kNames).trimmed();
    row.cells[kColTitle] = r.text(kTitle).trimmed();
    row.cells[kColId] = r.text(kId).trimmed();
    row.cells[kColLurits] = lurits;
    row.cells[kColPersal] = r.text(kPersal).trimmed();
    row.cells[kColGender] = r.text(kGender).trimmed();
    return row;
}

bool master_file_exists(store::Store& s) {
    return s.fs().file_exists(winpath::join(s.folders.staff, kMasterFile));
}

}  // namespace

std::array<GridColumn, kGridColumns> register_columns(bool afrikaans) {
    const auto pick = [afrikaans](const char* af, const char* en) {
        return QString::fromUtf8(afrikaans ? af : en);
    };
    return {{
        {pick("NR", "NO"), 500},
        {pick("POS", "PST"), 750},
        {pick("A/O", "A/I"), kDefaultWidth},
        {pick("VAN", "SURNAME"), 3000},
        {pick("NAME", "NAMES"), 3000},
        {pick("TTL", "TTL"), 600},
        {pick("ID NOMMER", "ID NUMBER"), kDefaultWidth},
        {pick("LURITS NR", "LURITS NO"), kDefaultWidth},
        {pick("PERSAL", "PERSAL"), kDefaultWidth},
        {pick("GESLAG", "GENDER"), kDefaultWidth},
    }};
}

// ---- RegisterGrid ----------------------------------------------------------------------------

void RegisterGrid::sort() {
    if (sort_column < 0 || sort_column >= kGridColumns) {
        return;
    }
    // As the list view sorts: by the rules of the language, so that "ÉTIENNE" stands with
    // the E's, and without regard to case. One fixed locale, whatever the machine's settings.
    static const QCollator collator = [] {
        QCollator c(QLocale(QLocale::Afrikaans, QLocale::SouthAfrica));
        c.setCaseSensitivity(Qt::CaseInsensitive);
        return c;
    }();
    const int c = sort_column;
    const bool up = ascending;
    std::stable_sort(rows.begin(), rows.end(), [c, up](const GridRow& a, const GridRow& b) {
        const int order = collator.compare(a.cells[c], b.cells[c]);
        return up ? order < 0 : order > 0;
    });
    selected = -1;
}

void RegisterGrid::header_click(int column) {
    if (column < 0 || column >= kGridColumns) {
        return;
    }
    if (column == sort_column) {
        ascending = !ascending;
    } else {
        sort_column = column;
        ascending = true;
    }
    sort();
}

// ---- the shared fill -------------------------------------------------------------------------

void fill_staff_lists(store::Store& store, RegisterGrid& grid, HiddenList& post_list,
                      HiddenList& name_list, const QString& state_filter) {
    const QString filter = state_filter.trimmed().isEmpty() ? QStringLiteral("*") : state_filter;
    grid.columns = register_columns(store.afrikaans);
    grid.rows.clear();
    grid.selected = -1;
    post_list.clear();
    name_list.clear();
    if (!master_file_exists(store)) {
        return;
    }
    if (!store.is_open(Code::PRSALG) && !store.open_file(Code::PRSALG)) {
        return;
    }
    RegisterUpkeep lurits(store);
    store.scan_records(Code::PRSALG, [&](int number, Record& r) {
        const QString state = r.text(kState).trimmed();
        const QString post = r.text(kPost).trimmed();
        if (post.isEmpty() || state == u"D") {
            return;
        }
        if ((filter == u"A" && state == u"*") || (filter == u"?" && state.isEmpty())) {
            return;
        }
        GridRow row = row_of(number, r, lurits.lurits_number(r.text(kId)));
        row.red[kColState] = !state.isEmpty();
        post_list.add_once(post, number);
        const QString name = (r.text(kTitle).trimmed() + u' ' + r.text(kNames).trimmed() + u' ' +
                              r.text(kSurname).trimmed())
                                 .trimmed();
        name_list.add_once(name, number);
        grid.rows.push_back(std::move(row));
    });
    grid.sort_column = kColSurname;
    grid.ascending = true;
    grid.sort();
}

int next_record_number(store::Store& store, Code code) {
    const store::RecordFile* f = store.file(code);
    const double records =
        f == nullptr ? 0.0
                     : static_cast<double>(f->byte_size()) / store::layout_of(code).record_length;
    return static_cast<int>(std::nearbyint(records + 1.0));
}

// ---- StaffRegister ---------------------------------------------------------------------------

StaffRegister::StaffRegister(shell::Session& session, bool educators)
    : upkeep(session),
      personeel_tipe(educators),
      user(session.user_name.isEmpty() ? platform::current_user() : session.user_name),
      session_(session) {
    prs_grid.columns = register_columns(session_.afrikaans);
    open_subject_rebuild = [this] {
        DbfLearnerSubjects learners(session_);
        StaffSubjects form(session_, learners);
        session_.dialogs().show_modal(form);
    };
}

bool StaffRegister::is_browse_program() const {
    return session_.executable_name.trimmed().compare(QStringLiteral("PENDARIC"),
                                                      Qt::CaseInsensitive) == 0;
}

bool StaffRegister::read_only() const {
    return session_.browse_mode || is_browse_program();
}

void StaffRegister::set_captions() {
    if (personeel_tipe) {
        staff_ops_caption = session_.tr("ONDERWYSERS", "EDUCATORS");
        personeel_tipe_caption =
            session_.tr("KLIK HIER VIR WERKNEMERS", "CLICK HERE FOR EMPLOYEES");
    } else {
        staff_ops_caption = session_.tr("WERKNEMERS", "EMPLOYEES");
        personeel_tipe_caption =
            session_.tr("KLIK HIER VIR ONDERWYSERS", "CLICK HERE FOR EDUCATORS");
    }
    new_record_enabled = !read_only();
}

StaffRegister::ToolTips StaffRegister::tool_tips() const {
    const shell::Session& s = session_;
    ToolTips t;
    t.task_options_new = s.tr(" INLEES : Laai nuwe Personeel ", " INPUT : Enter new Staff member ");
    t.task_options_search =
        s.tr(" SOEK : Soek volgens VAN/NAAM ", " SEARCH : Search according to SURNAME/NAMES ");
    t.task_options_print = s.tr(" DRUK : Wys Drukprogramme ", " PRINT : Show Print programs ");
    t.alg_opsies_attendance = s.tr(" Skoolbywoning ", " Attendance ");
    t.laai_vakke_van_admin =
        s.tr(" Herskep/Opdateer personeel vakleêr volgens posnommers van leerder vakke ",
             " Recreate/update staff subject file based on post numbers from learner subjects ");
    t.prs_grid = s.tr(" Linksklik om rekord te selekteer; Regsklik om kolom te sorteer ",
                      " Left click to select record; Right click on column to sort ");
    t.dir_disp_roster = s.tr(" Dataleêrpad (Rooster) : Klik om te verander ",
                             " Data file path (Time table) : Click to change ");
    t.staff_exit = QStringLiteral("EXIT");
    return t;
}

bool StaffRegister::form_load() {
    set_captions();
    prs_grid.columns = register_columns(session_.afrikaans);
    if (!master_file_exists(session_)) {
        session_.dialogs().message(session_.tr("GEEN PERSONEELBESONDERHEDE - SIEN KORVEL",
                                               "NO STAFF DETAILS - SEE KORVEL"),
                                   ui::Icon::Critical);
        closed = true;
        return false;
    }
    if (!session_.is_open(Code::PRSALG) && !session_.open_file(Code::PRSALG)) {
        return true;
    }
    if (session_.count(Code::PRSALG) < 1) {
        return true;  // an empty register, and nothing to repair
    }
    upkeep.prepare_lists();
    fill_grid();
    return true;
}

void StaffRegister::fill_grid() {
    prs_grid.columns = register_columns(session_.afrikaans);
    prs_grid.rows.clear();
    prs_grid.selected = -1;
    prs_kls_lys.clear();
    if (!session_.is_open(Code::PRSALG) && !session_.open_file(Code::PRSALG)) {
        return;
    }
    const bool everybody = is_browse_program();
    const int total = session_.count(Code::PRSALG);
    int running = 0;
    upkeep.begin_fill();
    // A fill repairs as it goes, record by record, so it runs to its end: no cancel.
    const std::unique_ptr<ui::Progress> bar = session_.dialogs().progress(
        session_.tr("Personeelregister word gelaai ...", "Loading the staff register ..."), total,
        false);
    session_.scan_records(Code::PRSALG, [&](int number, Record& r) {
        bar->step(number);
        upkeep.assign_spare_number();
        if (r.text(kSurname).trimmed().isEmpty() && r.text(kNames).trimmed().isEmpty() &&
            r.text(kTitle).trimmed().isEmpty()) {
            return;
        }
        if (r.text(kState).trimmed() == u"D") {
            return;
        }
        QString post = r.text(kPost).trimmed();
        if (!upkeep.repair_post_number(post)) {
            return;
        }
        if (!everybody && is_educator(r) != personeel_tipe) {
            return;
        }
        prs_kls_lys.add(post, ++running);
        upkeep.refresh_shown_record(post);
        prs_grid.rows.push_back(row_of(number, r, upkeep.lurits_number(r.text(kId))));
    });
    upkeep.end_fill();
    for (GridRow& row : prs_grid.rows) {
        if (!row.cells[kColState].isEmpty()) {
            for (int c = kColPost; c <= kColNames; ++c) {
                row.red[c] = true;
            }
        }
    }
    prs_grid.sort_column = kColSurname;
    prs_grid.ascending = true;
    prs_grid.sort();
}

void StaffRegister::prs_grid_column_click(int column) {
    prs_grid.header_click(column);
}

void StaffRegister::prs_grid_click(int row) {
    if (row < 0 || row >= static_cast<int>(prs_grid.rows.size())) {
        return;
    }
    prs_grid.selected = row;
    select_record(row);
}

void StaffRegister::prs_grid_key_down(int key_code) {
    if (key_code == kEnterKey && prs_grid.selected >= 0) {
        select_record(prs_grid.selected);
    }
}

bool search_grid(shell::Session& session, RegisterGrid& grid) {
    const std::optional<QString> answer = session.dialogs().input(
        session.tr("SOEK : VAN/NAME (of GEDEELTE)", "SEARCH : SURNAME/NAMES (or PART of)"),
        QString(), session.register_search_text);
    if (!answer || answer->trimmed().isEmpty()) {
        return false;
    }
    session.register_search_text = *answer;
    for (int i = 0; i < static_cast<int>(grid.rows.size()); ++i) {
        const GridRow& row = grid.rows[static_cast<std::size_t>(i)];
        if (row.cells[kColSurname].contains(*answer, Qt::CaseInsensitive) ||
            row.cells[kColNames].contains(*answer, Qt::CaseInsensitive)) {
            grid.selected = i;
            return true;
        }
    }
    return false;
}

void StaffRegister::search_grid() {
    if (staff::search_grid(session_, prs_grid)) {
        grid_has_focus = true;
    }
}

void StaffRegister::personeel_tipe_click() {
    personeel_tipe = !personeel_tipe;
    set_captions();
    fill_grid();
}

void StaffRegister::timer_tick(const QTime& now) {
    clock_text = now.toString(QStringLiteral("hh:mm:ss"));
    personeel_tipe_colour = now.second() % 2 == 0 ? kColourRed : kColourBlue;
}

void StaffRegister::task_options_click(int index) {
    switch (index) {
        case 1:
            if (!new_record_enabled) {
                return;
            }
            session_.open_file(Code::PRSALG);
            new_record = true;
            start_new_record();
            new_record = false;
            return;
        case 5:
            if (read_only()) {
                session_.dialogs().message(session_.tr("NIE BESKIKBAAR IN KYKPROGRAM NIE ...",
                                                       "NOT AVAILABLE IN BROWSE PROGRAM ..."),
                                           ui::Icon::Critical);
            } else if (show_print_chooser) {
                show_print_chooser();
            }
            return;
        default:
            search_grid();
            return;
    }
}

void StaffRegister::alg_opsies_click(int index) {
    if (index == 6 && open_attendance) {
        open_attendance(personeel_tipe);
    }
}

void StaffRegister::laai_vakke_van_admin_click() {
    if (!open_subject_rebuild) {
        return;
    }
    session_.close_file(Code::PRSVAK);
    open_subject_rebuild();
    session_.open_file(Code::PRSVAK);
}

void StaffRegister::dir_disp_roster_click() {
    shell::Startup(session_).run_path_tool();
}

void StaffRegister::staff_exit_click() {
    upkeep.close_register();
    closed = true;
}

void StaffRegister::select_record(int row) {
    if (row < 0 || row >= static_cast<int>(prs_grid.rows.size())) {
        return;
    }
    const int number = prs_grid.rows[static_cast<std::size_t>(row)].record();
    if (number <= 0) {
        return;
    }
    if (!session_.is_open(Code::PRSALG) && !session_.open_file(Code::PRSALG)) {
        return;
    }
    session_.read_record(Code::PRSALG, number);
    const Record& r = session_.working(Code::PRSALG);
    const QString post = r.text(kPost).trimmed();

    // The address record of the post number, made when there is none.
    if (!session_.is_open(Code::PRSADD) && !session_.open_file(Code::PRSADD)) {
        return;
    }
    if (const std::optional<int> add = upkeep.prs_add_lys.item_data(post)) {
        session_.read_record(Code::PRSADD, *add);
    } else {
        Record& a = session_.working(Code::PRSADD);
        a.clear();
        a.set_text(kAddPost, post);
        if (session_.append_record(Code::PRSADD)) {
            upkeep.prs_add_lys.add(post, session_.state(Code::PRSADD).current);
        }
    }

    // Another user working on the person keeps this one out.
    const QString type = session_.tr("PERSONEEL", "STAFF");
    lock_identification = r.text(kId).trimmed();
    if (!store::lock_record(session_, type, lock_identification, user)) {
        return;
    }
    selected_post = post;
    session_.ensure_subject_record(post);
    StaffEntry entry(session_, *this, false);
    entry.select_record();
    session_.dialogs().show_modal(entry);
    store::unlock_record(session_, type, lock_identification);
    fill_grid();
}

void StaffRegister::start_new_record() {
    if (read_only()) {
        return;
    }
    if (!session_.is_open(Code::PRSALG) && !session_.open_file(Code::PRSALG)) {
        return;
    }
    const auto next_number = [this](Code code) { return next_record_number(session_, code); };
    const int number = next_number(Code::PRSALG);
    session_.working(Code::PRSALG).clear();
    session_.write_record(Code::PRSALG, number);
    session_.state(Code::PRSALG).count = number;

    session_.open_file(Code::PRSADD);
    if (session_.is_open(Code::PRSADD)) {
        const int add = next_number(Code::PRSADD);
        session_.working(Code::PRSADD).clear();
        session_.write_record(Code::PRSADD, add);
        session_.state(Code::PRSADD).count = add;
    }
    StaffEntry entry(session_, *this, true);
    session_.dialogs().show_modal(entry);
    fill_grid();
}

}  // namespace korvel::staff
