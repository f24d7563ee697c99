// sk426_prg: the subject/grade tuition list.
#include "reports/tuition_list.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <string_view>

#include "platform/codepage.h"
#include "shell/session.h"
#include "store/field_bytes.h"
#include "store/record_layouts.h"

namespace korvel::reports {

using store::Code;
using store::Record;

namespace {
constexpr const auto& L = store::PRSALG;
constexpr const auto& V = store::PRSVAK;
// The teaching subjects of a subject record: elements 1 to 10.
constexpr int kFirstSubject = 1;
constexpr int kLastSubject = 10;
}  // namespace

TuitionList::TuitionList(shell::Session& session, PrintJob& job, PrintTargetHost* host)
    : StaffSelection(session, job, host) {}

void TuitionList::form_load() {
    caption = tr("VAK/GRAAD AANBIEDING", "SUBJECT/GRADE TUITION");
    load_selection();
    visible = true;
}

void TuitionList::exit_click() {
    close_files();
    visible = false;
}

void TuitionList::load_subjects() {
    if (subjects_loaded_)
        return;
    subjects_loaded_ = true;
    open_files({Code::PRSVAK});
    // Codes and grades are compared as the bytes they are on disk (the code page maps byte to
    // character one to one), each held as one number, and only the columns shown are made into
    // text.
    constexpr int kSlots = kLastSubject - kFirstSubject + 1;
    static_assert(V["PV_VAK2"].width <= 8 && V["PV_GRD2"].width <= 8);
    struct Bytes {
        std::string_view text;
        quint64 key = 0;  // the bytes, zero filled
        bool operator==(const Bytes& o) const {
            return key == o.key && text.size() == o.text.size();
        }
    };
    const auto bytes_of = [](std::string_view b) {
        Bytes out{b, 0};
        std::memcpy(&out.key, b.data(), b.size());
        return out;
    };
    std::array<Bytes, kSlots> codes;
    std::array<std::array<Bytes, kSlots>, kSlots> grades;
    std::array<int, kSlots> grade_count{};
    s_.scan_bytes(Code::PRSVAK, [&](int, const char* bytes) {
        const std::string_view key = store::trimmed_bytes(bytes, V["PV_POS_NR"]);
        if (key.empty())
            return;
        const QString post = cp1252::decode(key.data(), qsizetype(key.size())).toUpper();
        // A post number found twice: its first record counts.
        if (subjects_.contains(post))
            return;
        int n = 0;
        for (int i = kFirstSubject; i <= kLastSubject; ++i) {
            const std::string_view code = store::trimmed_bytes(bytes, V["PV_VAK2"], i);
            if (code.empty())
                continue;
            const Bytes c = bytes_of(code);
            const int at = int(std::find(codes.begin(), codes.begin() + n, c) - codes.begin());
            if (at == n) {
                codes[size_t(n)] = c;
                grade_count[size_t(n++)] = 0;
            }
            const std::string_view grade = store::trimmed_bytes(bytes, V["PV_GRD2"], i);
            auto& of = grades[size_t(at)];
            int& count = grade_count[size_t(at)];
            if (grade.empty())
                continue;
            const Bytes g = bytes_of(grade);
            if (std::find(of.begin(), of.begin() + count, g) == of.begin() + count)
                of[size_t(count++)] = g;
        }
        const int first = int(columns_.size());
        for (int c = 0; c < n; ++c) {
            // "code : 10 / 11", put together in place and made text in one piece; at most
            // eight characters of code and ten grades of three with their separators.
            std::array<char16_t, 8 + 3 + kSlots*(3 + 3)> text;
            size_t length = 0;
            const auto put = [&](std::string_view b) {
                for (const char byte : b)
                    text[length++] = cp1252::to_char(uchar(byte));
            };
            put(codes[size_t(c)].text);
            put(" : ");
            for (int g = 0; g < grade_count[size_t(c)]; ++g) {
                if (g > 0)
                    put(" / ");
                put(grades[size_t(c)][size_t(g)].text);
            }
            columns_.emplace_back(reinterpret_cast<const QChar*>(text.data()), qsizetype(length));
        }
        subjects_.insert(post, {first, n});
    });
}

std::span<const QString> TuitionList::subjects_of(const QString& post) {
    load_subjects();
    const auto [first, count] = subjects_.value(store::Store::index_key(post), {0, 0});
    return std::span<const QString>(columns_).subspan(size_t(first), size_t(count));
}

PrintGrid TuitionList::tuition_grid() {
    // The subjects of each person first: the widest row sets the columns; then the cells are
    // written in place.
    const std::vector<int> people = ordered_records();
    std::vector<QString> posts;
    std::vector<std::span<const QString>> subjects;
    posts.reserve(people.size());
    subjects.reserve(people.size());
    qsizetype widest = 0;
    for (int number : people) {
        posts.push_back(selected_post(number));
        subjects.push_back(subjects_of(posts.back()));
        widest = std::max(widest, qsizetype(subjects.back().size()));
    }
    QString format = tr(">POS|<PERSONEELLID|<ID-NOMMER", ">PST|<STAFF MEMBER|<ID NUMBER");
    for (qsizetype c = 0; c < widest; ++c)
        format += tr("|<VAK/GRD", "|<SBJ/GRD");
    PrintGrid grid;
    grid.set_format_string(format);
    const int first = grid.rows();
    grid.set_rows(first + int(people.size()));
    for (size_t i = 0; i < people.size(); ++i) {
        const int r = first + int(i);
        grid.cell(r, 0).text = std::move(posts[i]);
        grid.cell(r, 1).text = selected_name(people[i]);
        grid.cell(r, 2).text = store::trimmed_text(selected_bytes(people[i]), L["PA_ID_NR"]);
        for (size_t c = 0; c < subjects[i].size(); ++c)
            grid.cell(r, 3 + int(c)).text = subjects[i][c];
        fit_row_height(grid, r);
    }
    return grid;
}

bool TuitionList::print_tuition_list() {
    if (!start(tr("VAK/GRAAD AANBIEDING : ", "SUBJECT/GRADE TUITION : ")))
        return false;
    PrintGrid grid = tuition_grid();
    GridPageOptions options;
    options.left = 240;
    print_pages(grid, list_title(job_.state.report_name), {}, options);
    job_.finish_report();
    return true;
}

}  // namespace korvel::reports
