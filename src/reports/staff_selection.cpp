#include "reports/staff_selection.h"

#include <QFileInfo>
#include <algorithm>

#include "platform/winpath.h"

#include "reports/print_target.h"
#include "shell/helpers.h"
#include "shell/session.h"
#include "shell/staff_person.h"
#include "store/field_bytes.h"
#include "store/record_layouts.h"

namespace korvel::reports {

using store::Code;
using store::Record;
namespace {
constexpr const auto& L = store::PRSALG;
}

StaffSelection::StaffSelection(shell::Session& session, PrintJob& job, PrintTargetHost* host)
    : s_(session), job_(job), host_(host) {}

StaffSelection::~StaffSelection() {
    close_files();
}

QString StaffSelection::tr(const char* af, const char* en) const {
    return s_.afrikaans ? QString::fromUtf8(af) : QString::fromUtf8(en);
}

void StaffSelection::open_files(std::initializer_list<Code> codes) {
    for (Code c : codes) {
        if (!s_.is_open(c) && s_.open_file(c, s_.folders.staff))
            opened_.push_back(int(c));
    }
}

void StaffSelection::close_files() {
    for (int c : opened_)
        s_.close_file(Code(c));
    opened_.clear();
}

void StaffSelection::load_selection() {
    job_.afrikaans = s_.afrikaans;
    pos_teks[1] = tr("Van POS/NAAM", "From POST/NAME");
    pos_teks[2] = tr("Tot POS/NAAM", "To   POST/NAME");
    volgorde_captions = {tr("ALFABETIES", "ALPHABETIC"), tr("NUMERIES", "NUMERIC")};
    aanstelling_captions = {tr("ONDERWYSDEPARTEMENT", "EDUCATION DEPARTMENT"),
                            tr("BEHEERLIGGAAM", "GOVERNING BODY"),
                            tr("PYEI AANSTELLING", "PYEI APPOINTMENT")};
    administratief_caption = tr("ADMINISTRATIEWE PERSONEEL", "ADMINISTRATIVE STAFF");
    administratief_captions = {tr("SLEGS", "ONLY"), tr("INGESLUIT", "INCLUDED"),
                               tr("UITGESLUIT", "EXCLUDED")};

    open_files({Code::PRSALG});
    // Sorted by post number in capitals, each made once rather than at every comparison.
    std::vector<std::pair<QString, StaffListEntry>> by_post;
    read_master([&](int number, Record& r) {
        const QString post = r.text(L["PA_POS_NR"]).trimmed();
        if (post.isEmpty() || r.text(L["PA_AKTIEF"]).trimmed() == u"D")
            return;
        const QString name = size_t(number) < names_.size() ? names_[size_t(number)] : list_name(r);
        by_post.push_back({post.toUpper(), {post, number, post.leftJustified(6) + name}});
    });
    std::stable_sort(by_post.begin(), by_post.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });
    prs_lys.clear();
    prs_lys.reserve(by_post.size());
    for (auto& [key, entry] : by_post)
        prs_lys.push_back(std::move(entry));
    pos_data[1] = prs_lys.empty() ? QString() : prs_lys.front().text;
    pos_data[2] = prs_lys.empty() ? QString() : prs_lys.back().text;
    pos_focus = 1;
}

void StaffSelection::pos_data_got_focus(int index) {
    if (index == 1 || index == 2)
        pos_focus = index;
}

void StaffSelection::prs_lys_click(int row) {
    if (row < 0 || row >= int(prs_lys.size()))
        return;
    pos_data[size_t(pos_focus)] = prs_lys[size_t(row)].text;
    if (pos_focus == 1)
        pos_focus = 2;
}

std::vector<int> StaffSelection::selected_records() {
    open_files({Code::PRSALG});
    // The range runs from the entry in pos_data(1) to the one in pos_data(2); an entry not in
    // the list leaves that end open.
    int first = 0, last = int(prs_lys.size()) - 1;
    for (int i = 0; i < int(prs_lys.size()); ++i) {
        if (prs_lys[size_t(i)].text == pos_data[1])
            first = i;
        if (prs_lys[size_t(i)].text == pos_data[2])
            last = i;
    }
    std::vector<bool> wanted(size_t(std::max(0, s_.count(Code::PRSALG))) + 1, false);
    for (int i = first; i <= last; ++i) {
        const int number = prs_lys[size_t(i)].record;
        if (number >= 1 && size_t(number) < wanted.size())
            wanted[size_t(number)] = true;
    }
    if (!master_unchanged())
        read_master({});
    const int length = L.record_length;
    Record r(L);
    std::vector<int> out;
    for (int i = first; i <= last; ++i) {
        const int number = prs_lys[size_t(i)].record;
        if (number < 1 || qsizetype(number) * length > master_.size())
            continue;
        const char* bytes = master_.constData() + qsizetype(number - 1) * length;
        if (store::trimmed_bytes(bytes, L["PA_AKTIEF"]) == "*")
            continue;
        const QString paymaster = store::trimmed_text(bytes, L["PA_OD_BL"]).toUpper();
        if (!kies_aanstelling[0] && (paymaster == u"O" || paymaster.isEmpty()))
            continue;
        if (!kies_aanstelling[1] && paymaster == u"B")
            continue;
        if (!kies_aanstelling[2] && paymaster == u"P")
            continue;
        if (kies_administratief != AdminChoice::Included) {
            r.assign(bytes);
            const bool educator = shell::is_educator(r);
            if (kies_administratief == AdminChoice::Only && educator)
                continue;
            if (kies_administratief == AdminChoice::Excluded && !educator)
                continue;
        }
        out.push_back(number);
    }
    return out;
}

const Record& StaffSelection::read_selected(int number) {
    const int length = L.record_length;
    if (number < 1 || qsizetype(number) * length > master_.size()) {
        s_.read_record(Code::PRSALG, number);
    } else {
        s_.working(Code::PRSALG).assign(master_.constData() + qsizetype(number - 1) * length);
        s_.state(Code::PRSALG).current = number;
    }
    return s_.working(Code::PRSALG);
}

const char* StaffSelection::selected_bytes(int number) {
    const int length = L.record_length;
    if (number < 1 || qsizetype(number) * length > master_.size())
        return read_selected(number).data();
    return master_.constData() + qsizetype(number - 1) * length;
}

QString StaffSelection::selected_name(int number) {
    if (number >= 1 && size_t(number) < names_.size())
        return names_[size_t(number)];
    return list_name(read_selected(number));
}

QString StaffSelection::master_path() const {
    return s_.fs().native(winpath::join(
        s_.folder_of(Code::PRSALG), QString::fromLatin1(L.file_name.data(), L.file_name.size())));
}

void StaffSelection::read_master(const std::function<void(int, Record&)>& visit) {
    // The stamp is taken first: a write while the file is read makes the next look differ.
    const QFileInfo info(master_path());
    master_size_ = info.size();
    master_time_ = info.lastModified();
    master_.clear();
    master_.reserve(qsizetype(std::max(0, s_.count(Code::PRSALG))) * L.record_length);
    names_.assign(1, QString());
    s_.scan_records(Code::PRSALG, [&](int number, Record& r) {
        // A record the scan skipped leaves the rest unusable: they would sit at wrong places.
        if (qsizetype(number - 1) * L.record_length == master_.size()) {
            master_.append(r.bytes());
            names_.push_back(list_name(r));
        }
        if (visit)
            visit(number, r);
    });
    master_count_ = s_.count(Code::PRSALG);
}

bool StaffSelection::master_unchanged() const {
    const QFileInfo info(master_path());
    return master_count_ == s_.count(Code::PRSALG) && info.size() == master_size_ &&
           info.lastModified() == master_time_;
}

QString StaffSelection::list_name(const Record& r) {
    return r.text(L["PA_VAN"]).trimmed() + u' ' + shell::initials(r.text(L["PA_NAME"]).trimmed()) +
           u' ' + r.text(L["PA_TITEL"]).trimmed();
}

bool StaffSelection::start(const QString& name) {
    job_.afrikaans = s_.afrikaans;
    job_.state.report_name = s_.ledger_year + name;
    if (choose_target)
        return choose_target(job_);
    if (host_)
        return ask_print_target(job_, *host_, s_.fs().native(s_.folders.workstation));
    return false;
}

GridPageOptions StaffSelection::centred_table() {
    GridPageOptions options;
    options.centre_table = true;
    options.rule_every = 1;
    options.keep_rows = 9999;
    return options;
}

void StaffSelection::print_pages(PrintGrid& grid, const QString& title, const QString& subtitle,
                                 GridPageOptions options, double padding,
                                 const QString& orientation) {
    fit_grid_columns(job_, grid, 0, padding);
    // A page holds at least one row, so the loop ends; the bound guards a grid that never
    // shrinks.
    const int most = grid.rows() + 2;
    for (int pages = 0; pages < most; ++pages) {
        job_.state.page_pending = true;
        QString t = title, s = subtitle;
        job_.print_page_header(t, s, orientation);
        if (!job_.state.to_spreadsheet) {
            job_.device().set_scale_mode(ScaleMode::Characters);
            job_.device().set_current_y(6);
        }
        if (print_grid_pages(job_, grid, options))
            break;
        job_.print_continuation_mark();
        job_.device().new_page();
    }
}

QString list_title(const QString& report_name) {
    QString t = report_name.trimmed();
    if (t.endsWith(u':'))
        t.chop(1);
    return t.trimmed();
}

void fill_rows(PrintGrid& grid, const std::vector<QStringList>& rows) {
    const int first = grid.rows();
    grid.set_rows(first + int(rows.size()));
    for (size_t i = 0; i < rows.size(); ++i) {
        const int r = first + int(i);
        int most = 1;
        for (int c = 0; c < grid.cols() && c < rows[i].size(); ++c) {
            const QString& text = rows[i].at(c);
            grid.set_text(r, c, text);
            // Most cells are one line; only a cell with a break is split to count its lines.
            if (text.contains(u'\n') || text.contains(u'\r') || text.contains(u'~'))
                most = std::max(most, int(cell_lines(text).size()));
        }
        if (most > 1)
            grid.row(r).height = 200.0 * most + 40;
    }
}

}  // namespace korvel::reports
