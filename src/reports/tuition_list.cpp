// sk426_prg: the subject/grade tuition list.
#include "reports/tuition_list.h"

#include <algorithm>

#include "shell/session.h"
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
    s_.scan_records(Code::PRSVAK, [&](int, Record& r) {
        const QString post = store::Store::index_key(r.text(V["PV_POS_NR"]));
        // A post number found twice: its first record counts.
        if (post.isEmpty() || subjects_.contains(post))
            return;
        QStringList codes;
        std::vector<QStringList> grades;
        for (int i = kFirstSubject; i <= kLastSubject; ++i) {
            const QString code = r.text(V["PV_VAK2"], i).trimmed();
            if (code.isEmpty())
                continue;
            qsizetype at = codes.indexOf(code);
            if (at < 0) {
                codes << code;
                grades.emplace_back();
                at = codes.size() - 1;
            }
            const QString grade = r.text(V["PV_GRD2"], i).trimmed();
            if (!grade.isEmpty() && !grades[size_t(at)].contains(grade))
                grades[size_t(at)] << grade;
        }
        QStringList columns;
        for (qsizetype c = 0; c < codes.size(); ++c)
            columns << codes.at(c) + QStringLiteral(" : ") +
                           grades[size_t(c)].join(QStringLiteral(" / "));
        subjects_.insert(post, columns);
    });
}

QStringList TuitionList::subjects_of(const QString& post) {
    load_subjects();
    return subjects_.value(store::Store::index_key(post));
}

PrintGrid TuitionList::tuition_grid() {
    std::vector<QStringList> rows;
    qsizetype widest = 0;
    for (int number : selected_records()) {
        const Record& r = read_selected(number);
        const QString post = r.text(L["PA_POS_NR"]).trimmed();
        const QStringList subjects = subjects_of(post);
        widest = std::max(widest, subjects.size());
        rows.push_back(QStringList{post, list_name(r), r.text(L["PA_ID_NR"]).trimmed()} + subjects);
    }
    QString format = tr(">POS|<PERSONEELLID|<ID-NOMMER", ">PST|<STAFF MEMBER|<ID NUMBER");
    for (qsizetype c = 0; c < widest; ++c)
        format += tr("|<VAK/GRD", "|<SBJ/GRD");
    PrintGrid grid;
    grid.set_format_string(format);
    if (kies_volgorde == StaffOrder::Alphabetic)
        std::stable_sort(rows.begin(), rows.end(),
                         [](const QStringList& a, const QStringList& b) { return a[1] < b[1]; });
    fill_rows(grid, rows);
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
