// sk427_prg: the staff qualification list.
#include "reports/qualification_list.h"

#include <algorithm>
#include <iterator>

#include "shell/session.h"
#include "staff/qualification_names.h"
#include "store/field_bytes.h"
#include "store/record_layouts.h"

namespace korvel::reports {

using store::Code;
using store::Record;

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
    s_.scan_records(Code::PRSADD, [&](int, Record& r) {
        const QString post = store::Store::index_key(r.text(D["PD_POS_NR"]));
        if (!post.isEmpty() && !additional_.contains(post))
            additional_.insert(post, r.bytes());
    });
}

PrintGrid StaffQualificationList::qualification_grid() {
    load_additional();
    PrintGrid grid;
    grid.set_format_string(
        tr(">POS|<NAAM|<ID NOMMER / KWALIFIKASIE|<GESLAG / INSTANSIE (JAAR)",
           ">PST|<NAME|<ID NUMBER / QUALIFICATION|<GENDER / INSTITUTION (YEAR)"));
    Record additional(store::PRSADD);
    std::vector<std::pair<QString, std::vector<QStringList>>> blocks;
    for (int number : selected_records()) {
        const char* bytes = selected_bytes(number);
        const QString post = store::trimmed_text(bytes, L["PA_POS_NR"]);
        additional.clear();
        const QByteArray found = additional_.value(store::Store::index_key(post));
        if (found.size() == additional.size())
            additional.assign(found.constData());
        const QString name = selected_name(number);
        std::vector<QStringList> block{{post, name, store::trimmed_text(bytes, L["PA_ID_NR"]),
                                        store::trimmed_text(bytes, L["PA_GESLAG"])}};
        const Record* r = nullptr;  // the whole record, for the first slot that is not blank
        for (int slot = 1; slot <= kQualificationSlots; ++slot) {
            // Most slots are blank: they are skipped on their bytes.
            if (store::trimmed_bytes(bytes, L["PK_GRDE"], slot).empty())
                continue;
            if (r == nullptr)
                r = &read_selected(number);
            const QString grde = store::trimmed_text(bytes, L["PK_GRDE"], slot);
            const staff::QualificationType* type = staff::qualification_type_of(grde);
            const int list = grde.size() > 1 ? int(staff::QualificationList::akad)
                             : type          ? int(type->list)
                                             : -1;
            if (list >= 0 && !kwalifikasie_lys[size_t(list)])
                continue;
            const int year = r->int16(L["PK_JAAR"], slot);
            QString place = store::trimmed_text(bytes, L["PK_WAAR"], slot);
            if (year > 0)
                place += QStringLiteral(" (") + QString::number(year) + u')';
            block.push_back({QString(), QString(), staff::qualification_name(*r, additional, slot),
                             place.trimmed()});
        }
        blocks.push_back({name, std::move(block)});
    }
    if (kies_volgorde == StaffOrder::Alphabetic)
        std::stable_sort(blocks.begin(), blocks.end(),
                         [](const auto& a, const auto& b) { return a.first < b.first; });
    std::vector<QStringList> rows;
    for (auto& [name, block] : blocks)
        rows.insert(rows.end(), std::make_move_iterator(block.begin()),
                    std::make_move_iterator(block.end()));
    fill_rows(grid, rows);
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
