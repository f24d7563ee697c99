#include "shell/startup.h"

#include <QFile>

#include "platform/codepage.h"
#include "platform/process_end.h"
#include "platform/windows_settings.h"
#include "platform/winpath.h"
#include "shell/folders.h"
#include "shell/helpers.h"
#include "shell/school.h"
#include "store/quoted_text.h"

namespace korvel::shell {

using winpath::drive_of;
using winpath::join;
using winpath::name_of;
using winpath::parent_of;

namespace {

// The resolution loops only after the user has been shown a message and offered the path
// tool. Unattended, nobody answers: past this many rounds of one resolution the process ends
// instead of looping.
constexpr int kMaxRounds = 50;

qsizetype find_nocase(const QString& text, const QString& what) {
    return text.indexOf(what, 0, Qt::CaseInsensitive);
}

QString crlf_lines(const QStringList& lines) {
    QString out;
    for (const QString& l : lines) {
        out += l + QStringLiteral("\r\n");
    }
    return out;
}

// The last four characters of a folder replaced by a year, when they are a year.
QString with_year(const QString& folder, const QString& year) {
    if (folder.size() < 4) {
        return folder;
    }
    bool digits = false;
    folder.right(4).toInt(&digits);
    return digits ? folder.left(folder.size() - 4) + year : folder;
}

// A read-only file: on Windows its deletion fails, and here it is kept the same way.
bool is_read_only(const QString& native) {
    return !(QFile::permissions(native) & QFileDevice::WriteOwner);
}

}  // namespace

QStringList suite_programs() {
    return {QStringLiteral("KORVEL"), QStringLiteral("ZOLBRANE"), QStringLiteral("PENDARIC"),
            QStringLiteral("ORSTELL"), QStringLiteral("FOLVANE")};
}

QString Startup::executable_name() const {
    QString name = name_of(s_.executable_path);
    const qsizetype dot = name.lastIndexOf(u'.');
    if (dot > 0) {
        name = name.left(dot);
    }
    return name.toUpper();
}

QString Startup::network_file() const {
    return join(s_.folders.workstation, QStringLiteral("network.dta"));
}
QString Startup::language_file() const {
    return join(s_.folders.workstation, QStringLiteral("language.txt"));
}
QString Startup::year_used_file() const {
    return join(s_.folders.program, QStringLiteral("year_used.txt"));
}
QString Startup::path_tool() const {
    return join(s_.folders.suite_home, QStringLiteral("BRANTOK\\LINDOVER.EXE"));
}
void Startup::write_year_used(const QString& year) {
    s_.fs().create_folder(s_.folders.program);
    s_.fs().write_all(year_used_file(), cp1252::encode(year + QStringLiteral("\r\n")));
}

bool Startup::path_tool_exists() const {
    return s_.fs().file_exists(path_tool());
}

QString Startup::download_message() const {
    return s_.tr("LAAI EN INSTALLEER ASB DIE NUUTSTE KOPIE VAN FOLVANE VANAF",
                 "PLEASE LOAD AND INSTALL THE LATEST COPY OF FOLVANE FROM") +
           u'\n' + QLatin1String(kDownloadAddress);
}

QString Startup::already_loaded_message() const {
    return s_.tr("KORVEL reeds gelaai - sien 'TASK BAR' ...",
                 "KORVEL already loaded - see TASK BAR ...");
}

void Startup::begin() {
    // Every amount in the record files is read and written with a point and a comma.
    platform::force_number_format();
    s_.windows_product_name = platform::windows_product_name();
    derive_program_folders();
    prepare_folders();
    s_.ledger_year = QString::number(s_.today().year());
}

void Startup::locate() {
    resolve_folders();
    if (!s_.fs().folder_exists(s_.folders.staff)) {
        s_.folders.staff = staff_default(drive_of(s_.folders.program));
    }
    find_school_pictures(s_);
}

bool Startup::run_unattended() {
    begin();
    locate();
    read_language();
    if (!splash_check_school_file()) {
        return false;
    }
    settle_ledger_year();
    return true;
}

void Startup::derive_program_folders() {
    const QString exe = s_.executable_path;
    const QString drive = drive_of(exe);
    s_.folders.program_drive = drive;
    s_.folders.suite_home = drive + u'\\' + name_of(parent_of(parent_of(exe)));
    if (!exe.toUpper().contains(QStringLiteral("PROGRAM FILES"))) {
        QString found;
        const QStringList roots = s_.fs().folder_names(drive + u'\\');
        for (const QString& r : roots) {
            const QString up = r.toUpper();
            if (up.contains(QStringLiteral("PROGRAM FILES (X86)"))) {
                found = r;
                break;
            }
            if (up.contains(QStringLiteral("PROGRAM FILES"))) {
                found = r;  // the last one seen
            }
        }
        if (!found.isEmpty()) {
            s_.folders.suite_home = drive + u'\\' + found;
        }
    }
    s_.folders.program = join(s_.folders.suite_home, QStringLiteral("KORVEL"));
    s_.folders.workstation = drive + QStringLiteral("\\ProgramData\\VESPARINE");
    s_.folders.workstation_program =
        join(s_.folders.workstation, executable_name().replace(u'_', u'-'));
}

void Startup::create_folder_levels(const QString& path) {
    s_.fs().create_folder(path);
}

void Startup::carry_settings_files() {
    QStringList programs = suite_programs();
    programs << QStringLiteral("BRANTOK");
    for (const QString& p : programs) {
        const QString from = join(s_.folders.suite_home, p);
        if (!s_.fs().folder_exists(from)) {
            continue;
        }
        const QString to =
            p == u"BRANTOK" ? s_.folders.workstation : join(s_.folders.workstation, p);
        s_.fs().create_folder(to);
        for (const QString& f : s_.fs().file_names(from)) {
            const QString up = f.toUpper();
            if (up.contains(QStringLiteral(".EXE")) ||
                !(up.contains(QStringLiteral(".TXT")) || up.contains(QStringLiteral("NETWORK")))) {
                continue;
            }
            if (!s_.fs().file_exists(join(to, f))) {
                s_.fs().copy_file(join(from, f), join(to, f));
            }
        }
    }
    if (s_.fs().folder_exists(join(s_.folders.suite_home, QStringLiteral("ORSTELL")))) {
        write_backup_path_names();
    }
}

void Startup::write_backup_path_names() {
    const store::Folders& f = s_.folders;
    quoted::Writer w;
    for (const QString& line : {f.admin, f.admin, parent_of(f.funds), parent_of(f.stock),
                                parent_of(f.staff), QString(), parent_of(f.roster), QString(),
                                parent_of(f.budget), parent_of(f.general_year), f.admin}) {
        w.text(line).end_line();
    }
    const QString folder = join(f.workstation, QStringLiteral("ORSTELL"));
    s_.fs().create_folder(folder);
    s_.fs().write_all(join(folder, QStringLiteral("path_names.txt")), w.bytes());
}

void Startup::prepare_folders() {
    platform::remove_desktop_shortcuts(suite_programs());
    create_folder_levels(s_.folders.workstation);
    platform::show_hidden_folders();
    carry_settings_files();
    s_.fs().create_folder(s_.folders.workstation_program);
    write_version_files();
    QString own = executable_name().replace(u'_', u'-');
    if (own == u"LINDOVER") {
        own = QStringLiteral("BRANTOK");
    }
    if (s_.fs().folder_exists(join(s_.folders.suite_home, own))) {
        s_.folders.program = join(s_.folders.suite_home, own);
    }
    s_.fs().create_folder(s_.folders.program_drive + QStringLiteral("\\VESPARINE"));
}

void Startup::write_version_files() {
    const QString dte = join(s_.folders.workstation, QStringLiteral("Version_Numbers.dte"));
    const QString today = s_.today().toString(QStringLiteral("yyyy.MM.dd"));
    const std::optional<QByteArray> last = s_.fs().read_all(dte);
    if (last && cp1252::decode(*last).section(u'\n', 0, 0).trimmed() == today) {
        return;
    }
    s_.fs().write_all(dte, cp1252::encode(today + QStringLiteral("\r\n")));
    quoted::Writer w;
    for (const QString& p : suite_programs()) {
        const QString exe = join(join(s_.folders.suite_home, p), p + QStringLiteral(".EXE"));
        if (s_.fs().file_exists(exe)) {
            w.text(p).text(p == u"KORVEL" ? s_.program_version : QString()).end_line();
        }
    }
    s_.fs().write_all(join(s_.folders.workstation, QStringLiteral("Version_Numbers.txt")),
                      w.bytes());
}

void Startup::read_language() {
    const std::optional<QByteArray> bytes = s_.fs().read_all(language_file());
    if (!bytes) {
        return;
    }
    quoted::Reader r(*bytes);
    const std::optional<quoted::Value> v = r.next();
    if (v && v->kind == quoted::Value::Kind::Boolean) {
        s_.afrikaans = v->boolean;
    }
}

void Startup::write_language() {
    quoted::Writer w;
    w.boolean(s_.afrikaans).end_line();
    s_.fs().write_all(language_file(), w.bytes());
}

void Startup::read_network_file() {
    const std::optional<QByteArray> bytes = s_.fs().read_all(network_file());
    if (!bytes) {
        return;
    }
    QString text = cp1252::decode(*bytes);
    text.replace(QStringLiteral("\r\n"), QStringLiteral("\n")).replace(u'\r', u'\n');
    QStringList lines = text.split(u'\n');
    while (lines.size() < 8) {
        lines << QString();
    }
    store::Folders& f = s_.folders;
    QString* targets[] = {&f.admin,  &f.funds,  &f.stock, &f.staff,
                          &f.hbooks, &f.roster, &f.media, &f.budget};
    for (int i = 0; i < 8; ++i) {
        // A line that holds a NUL or other control characters is no path.
        QString line = lines.at(i).trimmed();
        for (const QChar c : line) {
            if (c.unicode() < 32) {
                line.clear();
                break;
            }
        }
        *targets[i] = line;
    }
}

void Startup::write_default_network_file() {
    const QString drive = drive_of(s_.folders.program).isEmpty() ? QStringLiteral("C:")
                                                                 : drive_of(s_.folders.program);
    const store::Folders d = default_folders(drive, s_.ledger_year);
    store::Folders& f = s_.folders;
    f.admin = d.admin;
    f.funds = d.funds;
    f.stock = d.stock;
    f.staff = d.staff;
    f.hbooks = d.hbooks;
    f.roster = d.roster;
    f.media = d.media;
    f.budget = d.budget;
    s_.fs().create_folder(f.workstation);
    s_.fs().write_all(network_file(), cp1252::encode(crlf_lines(network_lines(f))));
}

bool Startup::run_path_tool() {
    if (!path_tool_exists()) {
        s_.dialogs().message(download_message(), ui::Icon::Critical);
        return false;
    }
    s_.starter().start_detached(s_.fs().native(path_tool()), {});
    resolve_folders();
    return true;
}

void Startup::guard_rounds() {
    if (++rounds_ > kMaxRounds) {
        end_process(1);
    }
}

// The rounds are counted over one resolution, with the resolutions the path tool runs inside
// it; the next resolution (a folder change on the menu, say) starts from none.
class Startup::Resolution {
  public:
    explicit Resolution(Startup& s) : s_(s) {
        if (s_.depth_++ == 0) {
            s_.rounds_ = 0;
        }
    }
    ~Resolution() { --s_.depth_; }
    Resolution(const Resolution&) = delete;
    Resolution& operator=(const Resolution&) = delete;

  private:
    Startup& s_;
};

QString Startup::staff_default(const QString& drive) const {
    return drive + QStringLiteral("\\VESPARINE\\STAFF\\P") + s_.ledger_year;
}

void Startup::resolve_folders() {
    const int calendar_year = s_.today().year();
    bool ok = false;
    const int ledger = s_.ledger_year.toInt(&ok);
    if (ok && ledger < calendar_year - 2) {
        return;  // an old year is being browsed; its folders stand
    }
    const Resolution resolution(*this);
    store::Folders& f = s_.folders;
    for (;;) {
        guard_rounds();
        // 1.
        f.program_drive = drive_of(f.workstation);
        if (s_.fs().file_exists(network_file())) {
            read_network_file();
        }
        // 2.
        if (f.admin.isEmpty()) {
            write_default_network_file();
            if (run_path_tool()) {
                continue;
            }
            end_process(1);
        }
        // 3. The share was mapped one level below the suite's folder.
        if (find_nocase(f.admin, QStringLiteral("VESPARINE")) < 0) {
            s_.dialogs().message(
                QStringLiteral(
                    "YOUR NETWORK MAPPING IS ONE LEVEL TOO DEEP!!\n\n"
                    "IN A NETWORK ENVIRONMENT THE 'VESPARINE' FOLDER WITH ALL ITS SUB FOLDERS "
                    "MUST BE STORED, ON THE 'SERVER', IN A "
                    "PARENT FOLDER I.E. 'TANDRIL' AND ONLY THIS PARENT FOLDER MUST BE SHARED AS "
                    "DRIVE F: / M: or Z:!!"),
                ui::Icon::Critical);
            if (path_tool_exists()) {
                s_.starter().start_detached(s_.fs().native(path_tool()), {});
                continue;
            }
            s_.dialogs().message(download_message(), ui::Icon::Critical);
            end_process(1);
        }
        // 4.
        const qsizetype at = find_nocase(f.admin, QStringLiteral("\\VESPARINE"));
        f.program_drive = at >= 0 ? f.admin.left(at) : drive_of(f.program);
        // 5.
        if (find_nocase(f.admin, QStringLiteral("ADMIN")) < 0) {
            s_.fs().create_folder(f.program_drive + QStringLiteral("\\VESPARINE"));
            f.admin = f.program_drive + QStringLiteral("\\VESPARINE\\ADMIN");
            s_.fs().create_folder(f.admin);
            s_.dialogs().message(QStringLiteral("SKAKEL ASB TANDRIL"), ui::Icon::Critical);
            end_process(1);
        }
        // 6.
        if (!s_.fs().folder_exists(f.admin)) {
            s_.fs().create_folder(f.admin);
        }
        // 7.
        const QString learners = f.program_drive;
        if (!s_.fs().folder_exists(learners + u'\\')) {
            s_.dialogs().message(s_.tr("GIDS  ", "FOLDER  ") + learners +
                                     s_.tr("  VIR 'LEERDERS/GESINNE' NIE BESKIKBAAR NIE ...",
                                           "  FOR 'LEARNERS/FAMILIES' NOT AVAILABLE ...") +
                                     QStringLiteral("\n\n") +
                                     s_.tr("KONTAK U NETWERKADMINISTRATEUR !",
                                           "CONTACT YOUR NETWORK ADMINISTRATOR !"),
                                 ui::Icon::Critical);
            if (run_path_tool()) {
                continue;
            }
            end_process(1);
        }
        // 8.
        if (f.staff.isEmpty()) {
            f.staff = staff_default(f.program_drive);
        }
        // 9.
        const QString staff_drive = drive_of(f.staff);
        if (s_.fs().drive_exists(staff_drive)) {
            break;
        }
        s_.dialogs().message(
            s_.tr("NETWERK AANDRYWER  ", "NETWORK DRIVE  ") + staff_drive +
                s_.tr("  VIR 'PERSONEEL' NIE BESKIKBAAR NIE ...",
                      "  FOR 'STAFF' NOT AVAILABLE ...") +
                QStringLiteral("\n\n") +
                s_.tr("KONTAK U NETWERKADMINISTRATEUR !", "CONTACT YOUR NETWORK ADMINISTRATOR !"),
            ui::Icon::Critical);
        if (!run_path_tool()) {
            end_process(1);
        }
        return;  // the path tool's own resolution has run
    }

    // 10.
    f.program_drive = drive_of(f.suite_home);
    s_.fs().create_folder(f.program_drive + QStringLiteral("\\VESPARINE\\GENERAL"));
    // 11.
    const qsizetype at = find_nocase(f.admin, QStringLiteral("\\VESPARINE"));
    f.program_drive = at >= 0 ? f.admin.left(at) : drive_of(f.program);
    if (find_nocase(f.admin, QStringLiteral("\\VESPARINE\\ADMIN")) < 0) {
        f.admin = f.program_drive + QStringLiteral("\\VESPARINE\\ADMIN");
    }
    // 12.
    f.general_year = general_year_folder(f.admin, s_.ledger_year);
    s_.fs().create_folder(f.general_year);
    // 13. A year whose school record is blank falls back to an earlier year.
    for (;;) {
        f.school = f.general_year;
        QString name;
        if (s_.open_suite_file(QStringLiteral("SKL"), f.school)) {
            s_.read_record(store::Code::SKL, 1);
            name = store::clean_field(s_.working(store::Code::SKL).text(store::SKL["SD_SKOOL"]));
        }
        if (!name.trimmed().isEmpty()) {
            break;
        }
        const QString earlier = search_earlier_year();
        if (earlier.isEmpty()) {
            break;
        }
        f.general_year = earlier;
    }
    // 14.
    f.workstation_program = join(f.workstation, executable_name().replace(u'_', u'-'));
    s_.fs().create_folder(f.workstation_program);
}

QString Startup::search_earlier_year() {
    bool ok = false;
    const int ledger = s_.ledger_year.toInt(&ok);
    if (!ok) {
        return {};
    }
    const QString current = s_.ledger_year;
    const int lowest = std::max(ledger - 10, 2013);
    for (int year = ledger - 1; year >= lowest; --year) {
        QString folder = s_.folders.general_year;
        folder.replace(current, QString::number(year));
        s_.ledger_year = QString::number(year);
        if (s_.fs().folder_exists(folder)) {
            return folder;
        }
    }
    return {};
}

bool Startup::splash_check_school_file() {
    const QString skl = join(s_.folders.school, QStringLiteral("skl_dta_random.txt"));
    if (s_.fs().file_exists(skl)) {
        s_.open_suite_file(QStringLiteral("SKL"), s_.folders.school);
        return splash_finish();
    }
    s_.dialogs().message(
        s_.tr(" VESPARINE\\ADMIN nie op C:\\ ... Spesifiseer Aandrywer en Gidsnaam ",
              " VESPARINE\\ADMIN not on C:\\ ... Specify Drive and Directory "),
        ui::Icon::Critical);
    if (!path_tool_exists()) {
        s_.dialogs().message(download_message(), ui::Icon::Critical);
        return false;
    }
    s_.starter().start_detached(s_.fs().native(path_tool()), {});
    resolve_folders();
    return splash_finish();
}

bool Startup::splash_finish() {
    const QString skl = join(s_.folders.school, QStringLiteral("skl_dta_random.txt"));
    if (!s_.fs().file_exists(skl)) {
        s_.dialogs().message(QStringLiteral("No 'SKL_DTA_RANDOM.TXT' found on ") +
                                 s_.folders.admin + QStringLiteral(" ... Try again"),
                             ui::Icon::Critical);
        return false;
    }
    s_.open_suite_file(QStringLiteral("SKL"), s_.folders.school);
    load_school_record(s_);
    return true;
}

QString Startup::settle_ledger_year() {
    store::Folders& f = s_.folders;
    const QString calendar = QString::number(s_.today().year());
    // 1 and 2.
    s_.ledger_year = calendar;
    if (s_.fs().drive_exists(drive_of(f.staff))) {
        s_.fs().create_folder(f.staff);
    }
    // 3. Leftovers of older versions go without a question; read-only files stay.
    for (const QString& name : s_.fs().file_names(f.staff)) {
        const QString up = name.toUpper();
        if (up.contains(QStringLiteral(".NTX")) || up.contains(QStringLiteral("PRS_SVE")) ||
            up.contains(QStringLiteral("PRS_BAK")) || up.contains(QStringLiteral(".SVE"))) {
            const QString leftover = join(f.staff, name);
            if (!is_read_only(s_.fs().native(leftover))) {
                s_.fs().delete_file(leftover);
            }
        }
    }
    // 4.
    const std::optional<QByteArray> used = s_.fs().read_all(year_used_file());
    QString used_year;
    if (used) {
        used_year = cp1252::decode(*used).section(u'\n', 0, 0).remove(u'"').trimmed();
        // "-123" and "0000" are no year; the year goes into folder names, so nothing but a
        // year may pass.
        if (!is_year_text(used_year)) {
            used_year.clear();  // a line that is no year is passed over
        }
        s_.ledger_year = used_year.isEmpty() ? calendar : used_year;
    }
    // 5.
    if (!f.roster.isEmpty() && used && !used_year.isEmpty()) {
        if (s_.ledger_year.toInt() >= used_year.toInt()) {
            f.staff = with_year(f.staff, used_year);
        }
        f.roster = with_year(f.roster, used_year);
        s_.fs().create_folder(f.staff);
        s_.fs().create_folder(f.roster);
    }
    // 6.
    if (f.staff.right(4) != s_.ledger_year) {
        f.staff = with_year(f.staff, s_.ledger_year);
    }
    // 7.
    if (f.school.isEmpty()) {
        f.school = f.general_year;
    }
    if (s_.open_suite_file(QStringLiteral("SKL"), f.school)) {
        s_.read_record(store::Code::SKL, 1);
        s_.school.name =
            upper_name(store::clean_field(s_.working(store::Code::SKL).text(store::SKL["SD_SKOOL"]))
                           .trimmed());
        s_.school.initials = school_initials(s_.school.name);
    }
    // 8.
    fix_province(s_);
    // 9.
    for (const char* code : {"PRSALG", "PRSNME", "PRSAFW", "PRSLNE", "PRSSBI"}) {
        s_.open_staff_file(QString::fromLatin1(code), f.staff);
    }
    return f.staff;
}

}  // namespace korvel::shell
