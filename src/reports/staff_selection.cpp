#include "reports/staff_selection.h"

#include <QFileInfo>
#include <algorithm>

#include "platform/codepage.h"
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
    // Sorted by post number in capitals. The order is taken from the bytes, each ranked as its
    // capital sorts, five to a number; a post number with a capital that is two characters
    // ("ß") cannot be ranked so, and the list is then sorted on the capitals themselves.
    static_assert(L["PA_POS_NR"].width <= 7);
    std::vector<std::pair<quint64, StaffListEntry>> by_post;
    by_post.reserve(size_t(std::max(0, s_.count(Code::PRSALG))));
    bool ranked = true;
    read_master([&](int number, const char* r) {
        const std::string_view key = store::trimmed_bytes(r, L["PA_POS_NR"]);
        if (key.empty() || store::trimmed_bytes(r, L["PA_AKTIEF"]) == "D")
            return;
        quint64 rank = 0;
        for (int i = 0; i < L["PA_POS_NR"].width; ++i) {
            const unsigned char c =
                size_t(i) < key.size() ? cp1252::capital_rank(uchar(key[size_t(i)])) : 0;
            ranked = ranked && (c != 0 || size_t(i) >= key.size());
            rank = rank << 8 | c;  // a shorter number first: nothing ranks below its end
        }
        const QString& post = posts_[size_t(number)];  // made as the record was read
        const QString& name = names_[size_t(number)];
        // The post number left justified in six, then the name, made in one piece.
        const qsizetype width = std::max<qsizetype>(6, post.size());
        QString text(width + name.size(), u' ');
        QChar* out = text.data();
        std::copy(post.cbegin(), post.cend(), out);
        std::copy(name.cbegin(), name.cend(), out + width);
        by_post.push_back({rank, {post, number, std::move(text)}});
    });
    if (ranked) {
        std::stable_sort(by_post.begin(), by_post.end(),
                         [](const auto& a, const auto& b) { return a.first < b.first; });
    } else {
        std::stable_sort(by_post.begin(), by_post.end(), [](const auto& a, const auto& b) {
            return a.second.post.toUpper() < b.second.post.toUpper();
        });
    }
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
    std::vector<int> out;
    for (int i = first; i <= last; ++i) {
        const int number = prs_lys[size_t(i)].record;
        if (number < 1 || qsizetype(number) * length > master_.size())
            continue;
        const char* bytes = master_.constData() + qsizetype(number - 1) * length;
        if (store::trimmed_bytes(bytes, L["PA_AKTIEF"]) == "*")
            continue;
        // The paymaster's letter in either case; no other character is one of these three
        // in capitals.
        static_assert(L["PA_OD_BL"].width == 1);
        const std::string_view stored = store::trimmed_bytes(bytes, L["PA_OD_BL"]);
        const char letter = stored.empty() ? '\0' : stored[0];
        const char paymaster = letter >= 'a' && letter <= 'z' ? char(letter - 'a' + 'A') : letter;
        if (!kies_aanstelling[0] && (paymaster == 'O' || stored.empty()))
            continue;
        if (!kies_aanstelling[1] && paymaster == 'B')
            continue;
        if (!kies_aanstelling[2] && paymaster == 'P')
            continue;
        if (kies_administratief != AdminChoice::Included) {
            const bool educator = shell::is_educator(bytes);
            if (kies_administratief == AdminChoice::Only && educator)
                continue;
            if (kies_administratief == AdminChoice::Excluded && !educator)
                continue;
        }
        out.push_back(number);
    }
    return out;
}

std::vector<int> StaffSelection::ordered_records() {
    std::vector<int> records = selected_records();
    // Every record taken was read with the master file, so its name is at hand.
    if (kies_volgorde == StaffOrder::Alphabetic) {
        std::stable_sort(records.begin(), records.end(),
                         [&](int a, int b) { return names_[size_t(a)] < names_[size_t(b)]; });
    }
    return records;
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

QString StaffSelection::selected_post(int number) {
    if (number >= 1 && size_t(number) < posts_.size())
        return posts_[size_t(number)];
    return store::trimmed_text(read_selected(number).data(), L["PA_POS_NR"]);
}

QString StaffSelection::master_path() const {
    return s_.fs().native(winpath::join(
        s_.folder_of(Code::PRSALG), QString::fromLatin1(L.file_name.data(), L.file_name.size())));
}

void StaffSelection::read_master(const std::function<void(int, const char*)>& visit) {
    // The stamp is taken first: a write while the file is read makes the next look differ.
    const QFileInfo info(master_path());
    master_size_ = info.size();
    master_time_ = info.lastModified();
    // Read whole in one piece: the records are kept for the records the selection takes.
    const int count = std::max(0, s_.count(Code::PRSALG));
    const int length = L.record_length;
    store::RecordFile* file = s_.file(Code::PRSALG);
    master_.resize(qsizetype(count) * length);
    if (file == nullptr || !file->read_block(1, master_.data(), count))
        master_.clear();
    names_.assign(1, QString());
    names_.reserve(size_t(count) + 1);
    posts_.assign(1, QString());
    posts_.reserve(size_t(count) + 1);
    for (qsizetype at = 0; at < master_.size(); at += length) {
        const char* r = master_.constData() + at;
        names_.push_back(shell::list_name(r));
        posts_.push_back(store::trimmed_text(r, L["PA_POS_NR"]));
        if (visit)
            visit(int(names_.size()) - 1, r);
    }
    master_count_ = s_.count(Code::PRSALG);
}

bool StaffSelection::master_unchanged() const {
    const QFileInfo info(master_path());
    return master_count_ == s_.count(Code::PRSALG) && info.size() == master_size_ &&
           info.lastModified() == master_time_;
}

QString StaffSelection::list_name(const Record& r) {
    return shell::list_name(r.data());
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

void fill_rows(PrintGrid& grid, std::vector<QStringList> rows) {
    const int first = grid.rows();
    grid.set_rows(first + int(rows.size()));
    for (size_t i = 0; i < rows.size(); ++i) {
        const int r = first + int(i);
        for (int c = 0; c < grid.cols() && c < rows[i].size(); ++c)
            grid.cell(r, c).text = std::move(rows[i][c]);
    }
    fit_row_heights(grid, first);
}

void fit_row_heights(PrintGrid& grid, int first) {
    // Most cells are one line; only a cell that may break is split to count its lines. Many
    // cells of a column share their text (a subject, a qualification's name, a gender), so
    // each column remembers what its texts hold.
    const auto lines = [](const QString& text) {
        return holds_line_marks(text) ? int(cell_lines(text).size()) : 1;
    };
    std::vector<TextMemo<int, 128>> seen(size_t(std::max(0, grid.cols())));
    for (int row = first; row < grid.rows(); ++row) {
        int most = 1;
        for (int c = 0; c < grid.cols(); ++c) {
            const QString& text = grid.cell(row, c).text;
            if (!text.isEmpty())
                most = std::max(most, seen[size_t(c)].value(text, lines));
        }
        if (most > 1)
            grid.row(row).height = 200.0 * most + 40;
    }
}

}  // namespace korvel::reports
