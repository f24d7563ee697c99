#include "attendance/reason_codes.h"

#include <algorithm>

namespace korvel::attendance {

using store::Code;

namespace {
constexpr const store::Field& kFirst = store::PRSSBI["SBI_TIPE"];
constexpr const store::Field& kSecond = store::PRSSBI["SBI_BESK"];
constexpr int kDefaultCount = 11;

QString capitals(const QString& text) {
    QString out = text;
    for (QChar& c : out) {
        if (c >= u'a' && c <= u'z') {
            c = QChar(c.unicode() - u'a' + u'A');
        }
    }
    return out;
}
}  // namespace

ReasonCodes::ReasonCodes(shell::Session& session) : session_(session) {}

void ReasonCodes::form_load() {
    caption = session_.tr("REDE ONDERHOUD", "REASON MAINTENANCE");
    task_new_caption = session_.tr("INLEES : Regsklik op betrokke lys", "INPUT");
    task_delete_caption = session_.tr("UITVEE", "DELETE");
    closed = false;
    kde_frme_visible = false;
    if (!session_.is_open(Code::PRSSBI)) {
        session_.open_staff_file(QStringLiteral("PRSSBI"));
    }

    // 1. Fewer than eleven records: the defaults go behind what is there.
    if (session_.count(Code::PRSSBI) < kDefaultCount) {
        store::Record& r = session_.working(Code::PRSSBI);
        for (const char* reason : kDefaultReasons) {
            r.clear();
            r.set_text(kFirst, QString::fromLatin1(reason));
            r.set_text(kSecond, QString::fromLatin1(reason));
            session_.append_record(Code::PRSSBI);
        }
        session_.open_staff_file(QStringLiteral("PRSSBI"));
    }

    // 2.
    rde_grid.reset(1, 3);
    rede_kodes.clear();
    session_.scan_records(Code::PRSSBI, [&](int number, store::Record& r) {
        const QString first = r.text(kFirst).trimmed();
        const QString second = r.text(kSecond).trimmed();
        if (first.isEmpty()) {
            return;
        }
        const bool known = std::any_of(rede_kodes.begin(), rede_kodes.end(), [&](const QString& k) {
            return k.compare(first, Qt::CaseInsensitive) == 0;
        });
        if (known) {
            return;
        }
        rede_kodes << first;
        const int row = rde_grid.add_row();
        rde_grid.set_text(row, kCodeColNumber, QString::number(number));
        rde_grid.set_text(row, kCodeColFirst, first);
        rde_grid.set_text(row, kCodeColSecond, second);
    });

    // 3. The headings swap their words with the language; the columns stay.
    const QStringList headings = session_.afrikaans
                                     ? QStringList{"NR", "BESKRYWING", "DESCRIPTION"}
                                     : QStringList{"NO", "DESCRIPTION", "BESKRYWING"};
    for (int c = 0; c < 3; ++c) {
        rde_grid.set_text(0, c, headings[c]);
    }
    rde_grid.col_widths = {500, 4300, 4300};
    current_row = rde_grid.rows() > 1 ? 1 : -1;
}

void ReasonCodes::rde_grid_right_click() {
    if (session_.browse_mode) {
        return;
    }
    const int row = rde_grid.add_row();
    rde_grid.set_text(row, kCodeColNumber, QStringLiteral(">>>"));
    current_row = row;
    // The count stays raised for as long as the file stays open, whether or not this is saved.
    session_.state(Code::PRSSBI).count += 1;
    rde_grid.set_text(row, kCodeColNumber, QString::number(session_.count(Code::PRSSBI)));
    sbi_kde2[1].clear();
    sbi_kde2[2].clear();
    kde_frme_visible = true;
}

void ReasonCodes::rde_grid_click(int row) {
    if (row < 1 || row >= rde_grid.rows()) {
        return;
    }
    current_row = row;
    sbi_kde2[1] = rde_grid.text(row, kCodeColFirst);
    sbi_kde2[2] = rde_grid.text(row, kCodeColSecond);
    kde_frme_visible = true;
}

void ReasonCodes::rde_grid_key_down(int key_code) {
    if (key_code == kEnterKey) {
        rde_grid_click(current_row);
    } else if (key_code == kDeleteKey) {
        delete_row();
    }
}

void ReasonCodes::sbi_kde2_change(int index, const QString& text) {
    if (index == 1 || index == 2) {
        sbi_kde2[index] = capitals(text);
    }
}

void ReasonCodes::data_ok_click() {
    kde_frme_visible = false;
    if (current_row < 1 || current_row >= rde_grid.rows()) {
        return;
    }
    rde_grid.set_text(current_row, kCodeColFirst, capitals(sbi_kde2[1]).trimmed());
    rde_grid.set_text(current_row, kCodeColSecond, capitals(sbi_kde2[2]).trimmed());
}

void ReasonCodes::delete_row() {
    if (session_.browse_mode || current_row < 1 || current_row >= rde_grid.rows()) {
        return;
    }
    if (session_.dialogs().ask(session_.tr("IS U SEKER ?", "ARE YOU SURE ?"), ui::Buttons::YesNo,
                               ui::Icon::Question, ui::Answer::No) != ui::Answer::Yes) {
        return;
    }
    rde_grid.remove_row(current_row);
    if (current_row >= rde_grid.rows()) {
        current_row = rde_grid.rows() - 1;
    }
    if (current_row < 1) {
        current_row = -1;
    }
}

void ReasonCodes::task_options_click(int index) {
    if (index == 1) {
        rde_grid_right_click();
    } else if (index == 4) {
        delete_row();
    } else if (index == 5 && print_code_list) {
        print_code_list(code_list());
    }
}

void ReasonCodes::kodes_ok_click() {
    if (session_.browse_mode) {
        closed = true;
        return;
    }
    // The rows in grid order, numbered afresh from 1. Days already stored keep their numbers,
    // so a reason removed or moved gives the days behind it the reason that now has the number.
    QByteArray bytes;
    store::Record r(store::PRSSBI);
    for (int row = 1; row < rde_grid.rows(); ++row) {
        const QString first = rde_grid.text(row, kCodeColFirst);
        const QString second = rde_grid.text(row, kCodeColSecond);
        if (first.trimmed().isEmpty() && second.trimmed().isEmpty()) {
            continue;
        }
        r.clear();
        r.set_text(kFirst, first);
        r.set_text(kSecond, second);
        bytes += r.bytes();
    }
    // The whole file is replaced in one step.
    QString folder = session_.folder_of(Code::PRSSBI);
    if (folder.isEmpty()) {
        folder = session_.folders.staff;
    }
    session_.close_file(Code::PRSSBI);
    session_.fs().create_folder(folder);
    const QString path = folder + QStringLiteral("\\sbi_kde_random.txt");
    if (!session_.fs().write_all(path, bytes)) {
        session_.dialogs().message(
            session_.tr("KAN NIE  ", "CANNOT WRITE  ") + path + session_.tr("  SKRYF NIE!", "  !"),
            ui::Icon::Critical);
    }
    closed = true;
}

void ReasonCodes::admin_exit_click() {
    kde_frme_visible = false;
    closed = true;
}

CodeListPrint ReasonCodes::code_list() const {
    CodeListPrint out;
    out.title = session_.tr("SKOOLBYWONING KODES : ", "ATTENDANCE CODES : ") +
                session_.ledger_year.trimmed();
    store::RecordFile* f = session_.file(Code::PRSSBI);
    if (f == nullptr) {
        return out;
    }
    store::Record r(store::PRSSBI);
    f->scan(1, f->count(), [&](int number, const char* bytes) {
        r.assign(bytes);
        const QString first = r.text(kFirst).trimmed();
        if (!first.isEmpty()) {
            out.lines.push_back({{{5, QString::number(number)}, {10, first}}});
            out.lines.push_back({{{10, r.text(kSecond).trimmed()}}});
        }
        return true;
    });
    return out;
}

}  // namespace korvel::attendance
