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
constexpr int kSlots = kLastSubject - kFirstSubject + 1;

// A subject column as numbers: the code's bytes, its length and the number of grades, then the
// grades two to a word, each with its length. A grade is three bytes at most.
static_assert(V["PV_GRD2"].width <= 3);
struct ColumnKey {
    std::array<quint64, 2 + kSlots / 2> words{};
    bool operator==(const ColumnKey&) const = default;
};
size_t qHash(const ColumnKey& key, size_t seed) {
    quint64 h = seed;
    for (const quint64 w : key.words)
        h = (h ^ w) * 0x9E3779B97F4A7C15ULL;
    return size_t(h ^ (h >> 32));
}
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
    subjects_.reserve(size_t(std::max(0, s_.count(Code::PRSVAK))));
    // Codes and grades are compared as the bytes they are on disk (the code page maps byte to
    // character one to one), each held as one number, and only the columns shown are made into
    // text.
    static_assert(V["PV_VAK2"].width <= 8 && V["PV_GRD2"].width <= 8);
    struct Bytes {
        std::string_view text;
        quint64 key = 0;  // the bytes, zero filled
        bool operator==(const Bytes& o) const {
            return key == o.key && text.size() == o.text.size();
        }
    };
    // A code or grade is read as the word it starts: its record goes on well past it, and the
    // bytes after its end are masked off.
    static_assert(
        V["PV_VAK2"].element_offset(kLastSubject) + V["PV_VAK2"].width + 8 <= V.record_length &&
        V["PV_GRD2"].element_offset(kLastSubject) + V["PV_GRD2"].width + 8 <= V.record_length);
    const auto bytes_of = [](std::string_view b) {
        Bytes out{b, 0};
        std::memcpy(&out.key, b.data(), sizeof out.key);
        if (b.size() < sizeof out.key)
            out.key &= (quint64{1} << (8 * b.size())) - 1;
        return out;
    };
    std::array<Bytes, kSlots> codes;
    std::array<std::array<Bytes, kSlots>, kSlots> grades;
    std::array<int, kSlots> grade_count{};
    // A school's columns repeat (one subject in the same grades for many teachers): each
    // text is made once, keyed by its code and grades as numbers, and a post's columns are
    // its texts' places, so no text is counted again for each post that shows it.
    QHash<ColumnKey, int> made;
    s_.scan_bytes(Code::PRSVAK, [&](int, const char* bytes) {
        const std::string_view post = store::trimmed_bytes(bytes, V["PV_POS_NR"]);
        if (post.empty())
            return;
        // A post number found twice: its first record counts.
        const auto [place, added] = subjects_.try_emplace(store::capital_key(post));
        if (!added)
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
            const auto& of = grades[size_t(c)];
            const int count = grade_count[size_t(c)];
            ColumnKey key{
                {codes[size_t(c)].key, codes[size_t(c)].text.size() | quint64(count) << 8}};
            for (int g = 0; g < count; ++g)
                key.words[size_t(2 + g / 2)] |= (of[size_t(g)].key << 8 | of[size_t(g)].text.size())
                                                << (32 * (g % 2));
            int place = made.value(key, -1);
            if (place < 0) {
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
                for (int g = 0; g < count; ++g) {
                    if (g > 0)
                        put(" / ");
                    put(of[size_t(g)].text);
                }
                place = int(texts_.size());
                texts_.emplace_back(reinterpret_cast<const QChar*>(text.data()), qsizetype(length));
                made.insert(key, place);
            }
            columns_.push_back(place);
        }
        place->second = {first, n};
    });
}

QStringList TuitionList::subjects_of(const QString& post) {
    // A character the code page has not is in no stored post number.
    const QString trimmed = post.trimmed();
    const QByteArray bytes = cp1252::encode(trimmed);
    if (cp1252::decode(bytes) != trimmed)
        return {};
    QStringList out;
    for (const int place : subjects_of_key(store::capital_key(bytes.toStdString())))
        out << texts_[size_t(place)];
    return out;
}

std::span<const int> TuitionList::subjects_of_key(const std::string& key) {
    load_subjects();
    const auto found = subjects_.find(key);
    if (found == subjects_.end())
        return {};
    const auto [first, count] = found->second;
    return std::span<const int>(columns_).subspan(size_t(first), size_t(count));
}

PrintGrid TuitionList::tuition_grid() {
    // The subjects of each person first: the widest row sets the columns; then the cells are
    // written in place.
    const std::vector<int> people = ordered_records();
    std::vector<std::span<const int>> subjects;
    subjects.reserve(people.size());
    qsizetype widest = 0;
    for (int number : people) {
        const std::string_view post = store::trimmed_bytes(selected_bytes(number), L["PA_POS_NR"]);
        subjects.push_back(subjects_of_key(store::capital_key(post)));
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
        grid.cell(r, 0).text = selected_post(people[i]);
        grid.cell(r, 1).text = selected_name(people[i]);
        grid.cell(r, 2).text = store::trimmed_text(selected_bytes(people[i]), L["PA_ID_NR"]);
        for (size_t c = 0; c < subjects[i].size(); ++c)
            grid.cell(r, 3 + int(c)).share_text(texts_[size_t(subjects[i][c])]);
    }
    fit_row_heights(grid, first);
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
