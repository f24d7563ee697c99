#include "attendance/leave_capture.h"

#include "attendance/reason_codes.h"
#include "shell/helpers.h"

namespace korvel::attendance {

using store::Code;

LeaveCapture::LeaveCapture(shell::Session& session) : session_(session) {}

void LeaveCapture::form_load() {
    caption = session_.tr("SKOOLBYWONING - VERLOF", "ATTENDANCE - LEAVE");
    data_teks[1] = QStringLiteral("VAN DATUM");
    data_teks[2] = QStringLiteral("TOT DATUM");
    kode_lys_heading = QStringLiteral("TIPE VERLOF");
    closed = false;
    reason.clear();

    const auto& A = store::PRSALG;
    const store::Record& staff = session_.working(Code::PRSALG);
    post = staff.text(A["PA_POS_NR"]).trimmed();
    info = shell::staff_heading(staff);

    const QDate today = session_.today();
    prs_data[1] = shell::date_to_text(today);
    prs_data[2] = shell::date_to_text(today.addMonths(1));

    session_.open_staff_file(QStringLiteral("PRSAFW"));
    session_.open_staff_file(QStringLiteral("PRSSBI"));
    kode_lys = ListBox{};
    ag_opsies = ListBox{};
    ag_opsies.visible = false;
    fill_reason_lists(session_, kode_lys, ag_opsies);
}

void LeaveCapture::prs_data_click(int index) {
    if (index != 1 && index != 2) {
        return;
    }
    const QDate start = shell::text_to_date(prs_data[index], session_.today());
    const std::optional<QDate> picked =
        session_.dialogs().pick_date(data_teks[index], start.isValid() ? start : session_.today());
    if (picked && picked->isValid()) {
        prs_data[index] = shell::date_to_text(*picked);
    }
}

void LeaveCapture::kode_lys_dbl_click(int index) {
    if (index < 0 || index >= static_cast<int>(kode_lys.items.size())) {
        return;
    }
    kode_lys.list_index = index;
    reason = QString::number(kode_lys.items[index].item_data);
}

void LeaveCapture::kodes_click() {
    if (session_.browse_mode) {
        return;
    }
    ReasonCodes form(session_);
    form.form_load();
    session_.dialogs().show_modal(form);
    fill_reason_lists(session_, kode_lys, ag_opsies);
}

void LeaveCapture::data_ok_click() {
    if (session_.browse_mode) {
        return;
    }
    const auto& W = store::PRSAFW;
    // 1. Nothing is checked: a stretch that ends before it starts writes no day, and a blank
    // post number (no staff member in the buffer) writes no record.
    if (!post.isEmpty()) {
        if (!session_.is_open(Code::PRSAFW)) {
            session_.open_staff_file(QStringLiteral("PRSAFW"));
        }
        session_.ensure_attendance_record(post);
        const int number = session_.find_by_key(Code::PRSAFW, W["PF_POS_NR"], post);
        if (number != 0) {
            // 2. Only the day of the year counts.
            const QDate today = session_.today();
            const QDate from = shell::text_to_date(prs_data[1], today);
            const QDate to = shell::text_to_date(prs_data[2], today);
            const int first = from.isValid() ? from.dayOfYear() : 0;
            const int last = to.isValid() ? to.dayOfYear() : 0;
            // 3. Weekends and holidays too; the reason stands left aligned ("3 ").
            store::Record& r = session_.working(Code::PRSAFW);
            for (int slot = std::max(first, 1); slot <= last && slot <= kLastSlot; ++slot) {
                r.set_text(W["PF_DAG"], QStringLiteral("a"), slot);
                r.set_text(W["PF_REDE"], reason, slot);
            }
            // 4.
            session_.write_record(Code::PRSAFW, number);
        }
        session_.close_file(Code::PRSAFW);
    }
    // 5.
    const QString& from_text = prs_data[1];
    const QString& to_text = prs_data[2];
    session_.dialogs().message(
        session_.afrikaans
            ? QStringLiteral("VERLOF VIR POSNOMMER ") + post + QStringLiteral(" VIR TYDPERK ") +
                  from_text + QStringLiteral(" TOT ") + to_text + QStringLiteral(" GELAAI...")
            : QStringLiteral("LEAVE FOR POST NUMBER ") + post + QStringLiteral(" FOR PERIOD ") +
                  from_text + QStringLiteral(" TO ") + to_text + QStringLiteral(" CAPTURED..."),
        ui::Icon::Information);
    closed = true;
}

}  // namespace korvel::attendance
