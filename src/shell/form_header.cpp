#include "shell/form_header.h"

#include "shell/helpers.h"
#include "shell/startup.h"
#include "store/locks.h"

namespace korvel::shell {

HeaderStrip form_header_setup(Session& s, const QString& form_name) {
    HeaderStrip h;
    h.ops_datum = date_to_text(s.today());
    h.ops_tyd = s.now().toString(QStringLiteral("HH:mm:ss"));
    h.prg_version = upper_name(s.windows_product_name.isEmpty() ? QStringLiteral("KORVEL")
                                                                : s.windows_product_name) +
                    QStringLiteral(" (") + s.program_version + u')';
    h.internet_version =
        s.program_version + QStringLiteral(" (") + QLatin1String(kDownloadAddress) + u')';
    store::log_form_open(s, form_name, s.user_name);
    return h;
}

}  // namespace korvel::shell
