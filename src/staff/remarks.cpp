#include "staff/remarks.h"

#include "platform/codepage.h"
#include "platform/winpath.h"
#include "shell/common_dialogs.h"
#include "shell/helpers.h"

namespace korvel::staff {

RemarksFrame::RemarksFrame(shell::Session& session, QString path, QString caption)
    : caption(std::move(caption)), path(std::move(path)), session_(session) {}

bool RemarksFrame::form_load() {
    text = {};
    visible = false;
    if (session_.fs().file_exists(path)) {
        const std::optional<QByteArray> bytes = session_.fs().read_all(path);
        if (!bytes) {
            session_.dialogs().message(
                session_.tr(
                    QStringLiteral("LêER ") + path + QStringLiteral(" KAN NIE GELEES WORD NIE ..."),
                    QStringLiteral("FILE ") + path + QStringLiteral(" CANNOT BE READ ...")),
                ui::Icon::Critical);
            return false;
        }
        text = shell::read_rtf(*bytes);
    }
    visible = true;
    return true;
}

void RemarksFrame::teks_ok_click() {
    if (!session_.fs().write_all(path, shell::write_rtf(text))) {
        session_.dialogs().message(
            session_.tr(QStringLiteral("OPMERKINGS KON NIE IN ") + path +
                            QStringLiteral(" GESTOOR WORD NIE ... DIE VORIGE TEKS BLY BEHOU."),
                        QStringLiteral("REMARKS COULD NOT BE SAVED IN ") + path +
                            QStringLiteral(" ... THE PREVIOUS TEXT IS KEPT.")),
            ui::Icon::Critical);
        return;
    }
    visible = false;
}

std::optional<ui::FontChoice> RemarksFrame::rtf_font_click(const ui::FontChoice& current) {
    return session_.dialogs().choose_font(current);
}

QString RemarksFrame::date_text() const {
    return shell::date_to_text(session_.today());
}

QString RemarksFrame::picker_characters() {
    QString out;
    for (int b = 32; b <= 255; ++b) {
        const char raw = static_cast<char>(b);
        const QChar c = cp1252::decode(&raw, 1).at(0);
        if (c.isPrint() || c == QChar(0x00A0)) {
            out += c;
        }
    }
    return out;
}

QString remarks_folder(const shell::Session& session) {
    return winpath::join(session.folders.staff, QStringLiteral("opmerkings"));
}

void opmerkings_click(shell::Session& session, const QString& post, bool right_button) {
    const QString number = post.trimmed();
    if (!winpath::is_safe_file_component(number)) {
        session.dialogs().message(
            session.tr(QStringLiteral("POSNOMMER ") + number +
                           QStringLiteral(" KAN NIE IN 'N LêERNAAM GEBRUIK WORD NIE ..."),
                       QStringLiteral("POST NUMBER ") + number +
                           QStringLiteral(" CANNOT BE USED IN A FILE NAME ...")),
            ui::Icon::Exclamation);
        return;
    }
    open_remarks(session, QStringLiteral("personeel_opmerkings.") + number,
                 QStringLiteral("privaat_opmerkings.") + number, number, right_button);
}

void open_remarks(shell::Session& session, const QString& public_name, const QString& private_name,
                  const QString& whose, bool right_button) {
    if (right_button && !shell::ask_system_password(session)) {
        return;
    }
    const QString folder = remarks_folder(session);
    if (!session.fs().folder_exists(folder) && !session.fs().create_folder(folder)) {
        session.dialogs().message(
            session.tr(
                QStringLiteral("GIDS ") + folder + QStringLiteral(" KAN NIE GESKEP WORD NIE ..."),
                QStringLiteral("FOLDER ") + folder + QStringLiteral(" CANNOT BE CREATED ...")),
            ui::Icon::Critical);
        return;
    }
    const QString caption =
        right_button
            ? session.tr(QStringLiteral("PRIVAAT OPMERKINGS - "),
                         QStringLiteral("PRIVATE REMARKS - ")) +
                  whose
            : session.tr(QStringLiteral("OPMERKINGS - "), QStringLiteral("REMARKS - ")) + whose;
    RemarksFrame frame(session, winpath::join(folder, right_button ? private_name : public_name),
                       caption);
    if (frame.form_load()) {
        session.dialogs().show_modal(frame);
    }
}

}  // namespace korvel::staff
