// sk411_bl_prg, the governing body register.

#include "governing/member_register.h"

#include <cmath>

#include "governing/member_entry.h"
#include "platform/user.h"
#include "shell/helpers.h"
#include "store/locks.h"

namespace korvel::governing {

using store::BHRLGM;
using store::Code;
using store::Field;
using store::PRSADD;
using store::PRSALG;
using store::Record;

namespace {

constexpr const Field& kType = BHRLGM["BL_TIPE"];
constexpr const Field& kState = BHRLGM["BL_AKTIEF"];
constexpr const Field& kSurname = BHRLGM["BL_VAN"];
constexpr const Field& kNames = BHRLGM["BL_NAME"];
constexpr const Field& kTitle = BHRLGM["BL_TITEL"];
constexpr const Field& kId = BHRLGM["BL_ID_NR"];
constexpr const Field& kBirth = BHRLGM["BL_G_DATUM"];
constexpr const Field& kGender = BHRLGM["BL_GESLAG"];
constexpr const Field& kLockId = store::LOCK["LK_IDENTIFIKASIE"];

bool nameless(const Record& r) {
    return r.text(kSurname).trimmed().isEmpty() && r.text(kNames).trimmed().isEmpty() &&
           r.text(kTitle).trimmed().isEmpty();
}

bool open_members(shell::Session& s) {
    return s.is_open(Code::BHRLGM) || s.open_file(Code::BHRLGM);
}

}  // namespace

std::array<GridColumn, staff::kGridColumns> member_columns(bool afrikaans) {
    const auto pick = [afrikaans](const char* af, const char* en) {
        return QString::fromUtf8(afrikaans ? af : en);
    };
    return {{
        {pick("NR", "NO"), 500},
        {pick("TIPE", "TYPE"), 600},
        {pick("A/O", "A/I"), staff::kDefaultWidth},
        {pick("VAN", "SURNAME"), 3000},
        {pick("VRLTRS", "INITIALS"), 900},
        {pick("TTL", "TTL"), 600},
        {pick("ID NOMMER", "ID NUMBER"), staff::kDefaultWidth},
        {pick("GESLAG", "GENDER"), staff::kDefaultWidth},
    }};
}

std::array<GridColumn, staff::kGridColumns> staff_pick_columns(bool afrikaans) {
    const auto pick = [afrikaans](const char* af, const char* en) {
        return QString::fromUtf8(afrikaans ? af : en);
    };
    return {{
        {pick("POS", "PST"), 750},
        {pick("A/O", "A/I"), staff::kDefaultWidth},
        {pick("VAN", "SURNAME"), 3000},
        {pick("NAME", "NAMES"), 3000},
        {pick("TTL", "TTL"), 600},
        {pick("ID NOMMER", "ID NUMBER"), staff::kDefaultWidth},
    }};
}

QString member_key(const Record& member) {
    return member.text(kSurname).trimmed() + u' ' + member.text(kNames).trimmed() + u' ' +
           member.text(kTitle).trimmed();
}

QString member_lock_identification(const Record& member) {
    return member_key(member).left(kLockId.width);
}

namespace {

// The fields a member made from staff takes over as they stand.
struct Copied {
    const Field& to;
    const Field& from;
};
constexpr Copied kFromStaff[] = {
    {BHRLGM["BL_VAN"], PRSALG["PA_VAN"]},         {BHRLGM["BL_NAME"], PRSALG["PA_NAME"]},
    {BHRLGM["BL_TITEL"], PRSALG["PA_TITEL"]},     {BHRLGM["BL_GESLAG"], PRSALG["PA_GESLAG"]},
    {BHRLGM["BL_POS_NR"], PRSALG["PA_POS_NR"]},   {BHRLGM["BL_ID_NR"], PRSALG["PA_ID_NR"]},
    {BHRLGM["BL_HWLK_ST"], PRSALG["PA_HWLK_ST"]}, {BHRLGM["BL_RAS"], PRSALG["PA_RAS"]},
    {BHRLGM["BL_H_TAAL"], PRSALG["PA_TAAL"]},     {BHRLGM["BL_TAAL2"], PRSALG["PA_TAAL"]},
    {BHRLGM["BL_GEBREK"], PRSALG["PA_GEBREK"]},   {BHRLGM["BL_P_ADR1"], PRSALG["PA_P_ADR1"]},
    {BHRLGM["BL_P_ADR2"], PRSALG["PA_P_ADR2"]},   {BHRLGM["BL_P_ADR3"], PRSALG["PA_P_ADR3"]},
    {BHRLGM["BL_P_KODE"], PRSALG["PA_P_KODE"]},   {BHRLGM["BL_SEL"], PRSALG["PA_T_SEL"]},
    {BHRLGM["BL_EPOS"], PRSALG["PA_EPOS"]},
};
// Telephone and fax, split in code and number.
struct SplitPhone {
    const Field& from;
    const Field& code;
    const Field& number;
};
constexpr SplitPhone kPhones[] = {
    {PRSALG["PA_T_HUIS"], BHRLGM["BL_T_KODE"], BHRLGM["BL_T_NR"]},
    {PRSALG["PA_T_ANDER"], BHRLGM["BL_F_KODE"], BHRLGM["BL_F_NR"]},
};

}  // namespace

bool add_member_from_staff(shell::Session& s) {
    if (!open_members(s)) {
        return false;
    }
    const Record& staff = s.working(Code::PRSALG);
    const Record& add = s.working(Code::PRSADD);
    Record& m = s.working(Code::BHRLGM);
    m.clear();
    m.set_text(kType, QStringLiteral("2"));
    for (const Copied& c : kFromStaff) {
        m.set_text(c.to, staff.text(c.from).trimmed());
    }
    m.set_text(BHRLGM["BL_VRLTR"], shell::initials(staff.text(PRSALG["PA_NAME"]).trimmed()));
    const QString passport = add.text(PRSADD["PD_PASPOORT"]).trimmed();
    m.set_byte(BHRLGM["BL_SA_BURGER"], passport.isEmpty() ? 1 : 0);
    m.set_text(BHRLGM["BL_PASPOORT"], passport);
    if (const std::optional<QDate> birth = staff.date(PRSALG["PA_G_DATUM"])) {
        m.set_date(kBirth, *birth);
    }
    for (const SplitPhone& p : kPhones) {
        const MemberPhone split = split_member_phone(staff.text(p.from));
        m.set_text(p.code, split.code);
        m.set_text(p.number, split.number);
    }
    m.set_text(BHRLGM["BL_HOEDANIG"], QStringLiteral("5"));
    m.set_text(BHRLGM["BL_ONDERRIG"], QStringLiteral("3"));
    m.set_date(BHRLGM["BL_DTM_VERKIES"], s.today());
    return s.append_record(Code::BHRLGM);
}

store::Compaction close_members(shell::Session& s, QString* why) {
    QSet<QString> seen;
    return s.rewrite_file(
        Code::BHRLGM,
        [&seen](const Record& r) {
            const QString type = r.text(kType);
            if (nameless(r) || type.trimmed().isEmpty() || type.startsWith(QChar(0)) ||
                r.text(kState).trimmed() == u"D") {
                return false;
            }
            const QString key = member_key(r).toUpper();
            if (seen.contains(key)) {
                return false;
            }
            seen.insert(key);
            return true;
        },
        why);
}

// ---- MemberRegister -------------------------------------------------------------------------

MemberRegister::MemberRegister(shell::Session& session)
    : user(session.user_name.isEmpty() ? platform::current_user() : session.user_name),
      session_(session) {
    sgb_grid.columns = member_columns(session_.afrikaans);
}

void MemberRegister::set_captions() {
    caption = session_.tr("BEHEERLIGGAAMLEDE", "GOVERNING BODY MEMBERS");
    new_record_enabled = !session_.browse_mode;
}

MemberRegister::ToolTips MemberRegister::tool_tips() const {
    const shell::Session& s = session_;
    ToolTips t;
    t.task_options_new = s.tr(" INLEES : Laai nuwe Lede ", " INPUT : Enter new Member ");
    t.task_options_create = s.tr(" SKEP Beheerliggaamrekords van Personeelrekords ",
                                 " CREATE Governing Body records from Staff records ");
    t.task_options_search =
        s.tr(" SOEK : Soek volgens VAN/NAAM ", " SEARCH : Search according to SURNAME/NAMES ");
    t.task_options_print = s.tr(" DRUK : Wys Drukprogramme ", " PRINT : Show Print programs ");
    return t;
}

void MemberRegister::form_load() {
    set_captions();
    fill_members();
}

void MemberRegister::fill_members() {
    sgb_grid.columns = member_columns(session_.afrikaans);
    sgb_grid.rows.clear();
    sgb_grid.selected = -1;
    prs_lys.clear();
    if (!open_members(session_)) {
        return;
    }
    session_.scan_records(Code::BHRLGM, [&](int number, Record& r) {
        if (r.text(kState).trimmed() == u"D" || nameless(r)) {
            return;
        }
        // The same person twice: the later record is marked deleted, and goes at closing.
        const QString key = member_key(r);
        if (prs_lys.contains(key)) {
            r.set_text(kState, QStringLiteral("D"));
            session_.write_record(Code::BHRLGM, number);
            return;
        }
        prs_lys.add(key, number);
        if (!r.date(kBirth) && r.text(kId).trimmed().size() == 13) {
            const QString birth = staff::birth_date_from_id(r.text(kId).trimmed());
            if (!birth.isEmpty()) {
                r.set_date(kBirth, shell::text_to_date(birth, session_.today()));
                session_.write_record(Code::BHRLGM, number);
            }
        }
        GridRow row;
        row.cells[kColNumber] = QStringLiteral("%1").arg(number, 3, 10, QLatin1Char('0'));
        row.cells[kColType] = r.text(kType).trimmed();
        row.cells[kColState] = r.text(kState).trimmed();
        row.cells[kColSurname] = r.text(kSurname).trimmed();
        row.cells[kColInitials] = shell::initials(r.text(kNames).trimmed());
        row.cells[kColTitle] = r.text(kTitle).trimmed();
        row.cells[kColId] = r.text(kId).trimmed();
        row.cells[kColGender] = r.text(kGender).trimmed();
        if (!row.cells[kColState].isEmpty()) {
            for (int c = kColType; c <= kColInitials; ++c) {
                row.red[static_cast<std::size_t>(c)] = true;
            }
        }
        sgb_grid.rows.push_back(std::move(row));
    });
    sgb_grid.sort_column = kColSurname;
    sgb_grid.ascending = true;
    sgb_grid.sort();
}

void MemberRegister::sgb_grid_click(int row) {
    if (row < 0 || row >= static_cast<int>(sgb_grid.rows.size())) {
        return;
    }
    sgb_grid.selected = row;
    select_member(row);
}

void MemberRegister::sgb_grid_key_down(int key_code) {
    if (key_code == staff::kEnterKey && sgb_grid.selected >= 0) {
        select_member(sgb_grid.selected);
    }
}

void MemberRegister::task_options_click(int index) {
    switch (index) {
        case 1:
            if (new_record_enabled) {
                start_new_member();
            }
            return;
        case 2:
            if (new_record_enabled) {
                create_from_staff();
            }
            return;
        case 5:
            if (session_.browse_mode) {
                session_.dialogs().message(session_.tr("NIE BESKIKBAAR IN KYKPROGRAM NIE ...",
                                                       "NOT AVAILABLE IN BROWSE PROGRAM ..."),
                                           ui::Icon::Critical);
            } else if (show_print_chooser) {
                show_print_chooser();
            }
            return;
        default:
            if (staff::search_grid(session_, sgb_grid)) {
                grid_has_focus = true;
            }
            return;
    }
}

void MemberRegister::create_from_staff() {
    prs_grid = {};
    prs_grid.columns = staff_pick_columns(session_.afrikaans);
    prs_grid_checked.clear();
    prs_grid_visible = true;
    prs_grid_enabled = true;
    if (!session_.is_open(Code::PRSALG) && !session_.open_file(Code::PRSALG)) {
        return;
    }
    if (!session_.is_open(Code::PRSADD)) {
        session_.open_file(Code::PRSADD);
    }
    HiddenList posts;
    session_.scan_records(Code::PRSALG, [&](int number, Record& r) {
        const QString post = r.text(PRSALG["PA_POS_NR"]).trimmed();
        const QString state = r.text(PRSALG["PA_AKTIEF"]).trimmed();
        if (post.isEmpty() || state == u"D" || !posts.add_once(post, number)) {
            return;
        }
        GridRow row;
        row.cells[kPickPost] = post;
        row.cells[kPickState] = state;
        row.cells[kPickSurname] = r.text(PRSALG["PA_VAN"]).trimmed();
        row.cells[kPickNames] = r.text(PRSALG["PA_NAME"]).trimmed();
        row.cells[kPickTitle] = r.text(PRSALG["PA_TITEL"]).trimmed();
        row.cells[kPickId] = r.text(PRSALG["PA_ID_NR"]).trimmed();
        prs_grid.rows.push_back(std::move(row));
    });
    // In post number order; the record behind each row is found by its post number.
    prs_grid.sort_column = kPickPost;
    prs_grid.sort();
    prs_grid_checked.assign(prs_grid.rows.size(), false);
}

void MemberRegister::prs_grid_check(int row, bool checked) {
    if (prs_grid_enabled && row >= 0 && row < static_cast<int>(prs_grid_checked.size())) {
        prs_grid_checked[static_cast<std::size_t>(row)] = checked;
    }
}

void MemberRegister::data_ok_click() {
    if (!prs_grid_enabled || !prs_grid_visible) {
        return;
    }
    for (std::size_t i = 0; i < prs_grid.rows.size(); ++i) {
        if (!prs_grid_checked[i]) {
            continue;
        }
        const QString post = prs_grid.rows[i].cells[kPickPost];
        const int number = session_.find_by_key(Code::PRSALG, PRSALG["PA_POS_NR"], post);
        if (number == 0) {
            continue;
        }
        session_.read_record(Code::PRSALG, number);
        Record& add = session_.working(Code::PRSADD);
        add.clear();
        if (session_.is_open(Code::PRSADD)) {
            if (const int a = session_.find_by_key(Code::PRSADD, PRSADD["PD_POS_NR"], post)) {
                session_.read_record(Code::PRSADD, a);
            } else {
                add.clear();
            }
        }
        add_member_from_staff(session_);
    }
    prs_grid_enabled = false;
    fill_members();
}

void MemberRegister::select_member(int row) {
    if (row < 0 || row >= static_cast<int>(sgb_grid.rows.size())) {
        return;
    }
    const int number = sgb_grid.rows[static_cast<std::size_t>(row)].record();
    if (number <= 0 || !open_members(session_)) {
        return;
    }
    session_.read_record(Code::BHRLGM, number);
    // Another user working on the member keeps this one out, as for staff.
    const QString type = session_.tr("PERSONEEL", "STAFF");
    QString identification = member_lock_identification(session_.working(Code::BHRLGM));
    if (!store::lock_record(session_, type, identification, user)) {
        return;
    }
    MemberEntry entry(session_, false);
    entry.select_member(number, &sgb_grid);
    session_.dialogs().show_modal(entry);
    store::unlock_record(session_, type, identification);
    fill_members();
}

void MemberRegister::start_new_member() {
    if (session_.browse_mode || !open_members(session_)) {
        return;
    }
    const int number = new_member_record(session_);
    if (number == 0) {
        return;
    }
    MemberEntry entry(session_, true);
    entry.select_member(number, nullptr);
    session_.dialogs().show_modal(entry);
    fill_members();
}

void MemberRegister::staff_exit_click() {
    close_members(session_);
    closed = true;
}

}  // namespace korvel::governing
