#include "shell/common_dialogs.h"

#include "shell/helpers.h"

namespace korvel::shell {

ui::Answer ask_sure(Session& s) {
    return s.dialogs().ask(s.tr("IS U SEKER ?", "ARE YOU SURE ?"), ui::Buttons::OkCancel,
                           ui::Icon::Critical, ui::Answer::Ok);
}

bool ask_backup_first(Session& s) {
    const QString text = s.tr(
        "HIERDIE FUNKSIE GAAN ONOMKEERBARE VERANDERINGS AAN U DATA AANBRING !!!\n\n"
        "WIL U EERS 'N RUGSTEUN MAAK OF HIERDIE FUNKSIE KANSELLEER ?",
        "THIS FUNCTION WILL MAKE IRRECOVERABLE CHANGES TO YOUR DATA !!!\n\n"
        "DO YOU WISH TO BACKUP FIRST OR CANCEL THIS FUNCTION ?");
    return s.dialogs().ask(text, ui::Buttons::YesNo, ui::Icon::Critical, ui::Answer::Yes) ==
           ui::Answer::Yes;
}

bool ask_system_password(Session& s) {
    const std::optional<QString> typed =
        s.dialogs().input(QString(), s.tr("STELSEL WAGWOORD", "SYSTEM PASSWORD"), QString(), true);
    if (!typed || typed->isEmpty()) {
        return false;
    }
    if (*typed != QLatin1String(kSystemPassword)) {
        s.dialogs().beep();
        return false;
    }
    return true;
}

QDate set_system_date(Session& s) {
    const std::optional<QDate> picked =
        s.dialogs().pick_date(s.tr("STELSELDATUM", "SYSTEM DATE"), s.today());
    if (!picked) {
        return {};
    }
    const QDate chosen = text_to_date(picked->toString(QStringLiteral("yyyy/MM/dd")), s.today());
    const QString old_text = date_to_text(s.today());
    const QString new_text = date_to_text(chosen);
    const QString question =
        s.afrikaans ? QStringLiteral("WIL U DEFNITIEF DIE STELSELDATUM VAN  ") + old_text +
                          QStringLiteral("  NA  ") + new_text + QStringLiteral("  VERANDER ?")
                    : QStringLiteral("DO YOU REALLY WISH TO CHANGE THE SYSTEM DATE FROM  ") +
                          old_text + QStringLiteral("  TO  ") + new_text + QStringLiteral(" ?");
    if (s.dialogs().ask(question, ui::Buttons::YesNo, ui::Icon::Question, ui::Answer::No) !=
        ui::Answer::Yes) {
        return {};
    }
    return chosen;
}

QString choose_folder(Session& s, const QString& caption, const QString& start) {
    return s.dialogs().choose_folder(caption, start);
}

}  // namespace korvel::shell
