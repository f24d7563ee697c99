// sk427_prg: the staff qualification list.
#include "reports/qualification_list.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstring>
#include <iterator>

#include "platform/codepage.h"
#include "shell/session.h"
#include "staff/qualification_names.h"
#include "store/field_bytes.h"
#include "store/record_layouts.h"

namespace korvel::reports {

using store::Code;

namespace {
constexpr const auto& L = store::PRSALG;
constexpr int kQualificationSlots = 8;
}  // namespace

StaffQualificationList::StaffQualificationList(shell::Session& session, PrintJob& job,
                                               PrintTargetHost* host)
    : StaffSelection(session, job, host) {}

void StaffQualificationList::form_load() {
    caption = tr("KWALIFIKASIES", "QUALIFICATIONS");
    kwalifikasie_lys_captions = {tr("PROFESSIONEEL", "PROFESSIONAL"), tr("AKADEMIES", "ACADEMIC"),
                                 QStringLiteral("DETAIL")};
    load_selection();
    visible = true;
}

void StaffQualificationList::exit_click() {
    close_files();
    visible = false;
}

void StaffQualificationList::load_additional() {
    if (additional_loaded_)
        return;
    additional_loaded_ = true;
    open_files({Code::PRSADD});
    const auto& D = store::PRSADD;
    const size_t count = size_t(std::max(0, s_.count(Code::PRSADD)));
    additional_.reserve(count);
    additional_records_.reserve(qsizetype(count) * D.record_length);
    s_.scan_bytes(Code::PRSADD, [&](int, const char* r) {
        const std::string_view post = store::trimmed_bytes(r, D["PD_POS_NR"]);
        if (!post.empty() &&
            additional_.try_emplace(store::capital_key(post), additional_records_.size()).second)
            additional_records_.append(r, D.record_length);
    });
}

const char* StaffQualificationList::additional_of(const std::string& key) const {
    const auto found = additional_.find(key);
    return found == additional_.end() ? nullptr : additional_records_.constData() + found->second;
}

PrintGrid StaffQualificationList::qualification_grid() {
    load_additional();
    PrintGrid grid;
    grid.set_format_string(
        tr(">POS|<NAAM|<ID NOMMER / KWALIFIKASIE|<GESLAG / INSTANSIE (JAAR)",
           ">PST|<NAME|<ID NUMBER / QUALIFICATION|<GENDER / INSTITUTION (YEAR)"));
    // A row for each person, then one for each qualification shown (slot 1 to 8); the
    // cells are written in place once the rows are counted.
    struct Line {
        int number;
        int slot;  // 0: the person's own row
    };
    std::vector<Line> lines;
    for (int number : ordered_records()) {
        const char* bytes = selected_bytes(number);
        lines.push_back({number, 0});
        for (int slot = 1; slot <= kQualificationSlots; ++slot) {
            // Most slots are blank: they are skipped on their bytes.
            const std::string_view grde = store::trimmed_bytes(bytes, L["PK_GRDE"], slot);
            if (grde.empty())
                continue;
            const staff::QualificationType* type =
                staff::qualification_type_of(QChar(uchar(grde.front())));
            const int list = grde.size() > 1 ? int(staff::QualificationList::akad)
                             : type          ? int(type->list)
                                             : -1;
            if (list < 0 || kwalifikasie_lys[size_t(list)])
                lines.push_back({number, slot});
        }
    }
    const int first = grid.rows();
    grid.set_rows(first + int(lines.size()));
    const char* additional = nullptr;
    store::RecentTexts<> places;
    for (size_t i = 0; i < lines.size(); ++i) {
        const int r = first + int(i);
        const auto [number, slot] = lines[i];
        const char* bytes = selected_bytes(number);
        if (slot == 0) {
            additional =
                additional_of(store::capital_key(store::trimmed_bytes(bytes, L["PA_POS_NR"])));
            grid.cell(r, 0).text = selected_post(number);
            grid.cell(r, 1).text = selected_name(number);
            grid.cell(r, 2).text = store::trimmed_text(bytes, L["PA_ID_NR"]);
            grid.cell(r, 3).text = store::trimmed_text(bytes, L["PA_GESLAG"]);
        } else {
            grid.cell(r, 2).text = staff::qualification_name(bytes, additional, slot);
            const std::int16_t year = store::int16_bytes(bytes, L["PK_JAAR"], slot);
            const std::string_view where = store::trimmed_bytes(bytes, L["PK_WAAR"], slot);
            // An institution and year recur from person to person: the text is made from
            // their bytes once.
            std::array<char, L["PK_WAAR"].width + sizeof(std::int16_t)> key;
            std::copy(where.begin(), where.end(), key.begin());
            std::memcpy(key.data() + where.size(), &year, sizeof year);
            const auto make = [&] {
                // "institution (year)", the year when there is one, put together in place and
                // trimmed as text: a blank institution leaves "(year)".
                std::array<QChar, L["PK_WAAR"].width + 8> place;
                qsizetype n = 0;
                for (const char b : where)
                    place[size_t(n++)] = QChar(cp1252::to_char(uchar(b)));
                if (year > 0) {
                    char digits[8];
                    const char* end = std::to_chars(digits, digits + sizeof digits, year).ptr;
                    place[size_t(n++)] = u' ';
                    place[size_t(n++)] = u'(';
                    for (const char* d = digits; d < end; ++d)
                        place[size_t(n++)] = QLatin1Char(*d);
                    place[size_t(n++)] = u')';
                }
                return QStringView(place.data(), n).trimmed().toString();
            };
            grid.cell(r, 3).share_text(places.text({key.data(), where.size() + sizeof year}, make));
        }
    }
    fit_row_heights(grid, first);
    return grid;
}

bool StaffQualificationList::print_qualification_list() {
    if (!start(tr("PERSONEEL KWALIFIKASIES : ", "STAFF QUALIFICATIONS : ")))
        return false;
    PrintGrid grid = qualification_grid();
    GridPageOptions options;
    options.left = 120;
    print_pages(grid, list_title(job_.state.report_name), {}, options);
    job_.finish_report();
    return true;
}

}  // namespace korvel::reports
