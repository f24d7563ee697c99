#include "staff/learner_cascade.h"

#include <shapefil.h>

#include <QFile>
#include <memory>

#include "platform/codepage.h"

namespace korvel::staff {

namespace {

struct TableFile {
    LearnerTable table;
    const char* file;
    // The post number field, or nullptr where every character field whose name holds "POS" is
    // a teacher cell (the subject groups, and the behaviour table's teacher field).
    const char* field;
};

constexpr TableFile kTableFiles[] = {
    {LearnerTable::General, "ppl_cmp.dbf", "PD_V_POS"},
    {LearnerTable::Classes, "kls_dta.dbf", "KD_POS_NR"},
    {LearnerTable::Subjects, "vakdta.dbf", nullptr},
    {LearnerTable::Behaviour, "H_W.dbf", nullptr},
    {LearnerTable::Guardians, "v_p_dta.dbf", "VD_POS"},
};

const TableFile& table_file(LearnerTable table) {
    for (const TableFile& t : kTableFiles) {
        if (t.table == table) {
            return t;
        }
    }
    return kTableFiles[0];
}

QString without_stars(const QString& s) {
    QString out = s.trimmed();
    out.remove(u'*');
    return out;
}

}  // namespace

bool post_number_matches(const QString& cell, const QString& post) {
    const QString c = without_stars(cell);
    return !c.isEmpty() && c.compare(without_stars(post), Qt::CaseInsensitive) == 0;
}

QStringList learner_year_folders(const shell::Session& session, const QStringList& years) {
    QStringList folders;
    const QString suffix = session.ledger_year.right(2);
    for (const QString& year : years) {
        folders << session.folders.admin + QStringLiteral("\\L") + year + suffix;
    }
    return folders;
}

int DbfLearnerFiles::rewrite_post_cells(
    const QString& year_folder, LearnerTable table,
    const std::function<std::optional<QString>(const QString&)>& edit) {
    const TableFile& t = table_file(table);
    const QString path = year_folder + u'\\' + QString::fromLatin1(t.file);
    if (!session_.fs().file_exists(path)) {
        return 0;
    }
    const QByteArray native = QFile::encodeName(session_.fs().native(path));
    const std::unique_ptr<DBFInfo, void (*)(DBFHandle)> dbf(DBFOpen(native.constData(), "rb+"),
                                                            DBFClose);
    if (!dbf) {
        return 0;
    }
    std::vector<int> cells;
    const int fields = DBFGetFieldCount(dbf.get());
    for (int i = 0; i < fields; ++i) {
        char name[XBASE_FLDNAME_LEN_READ + 1] = {};
        int width = 0;
        int decimals = 0;
        if (DBFGetFieldInfo(dbf.get(), i, name, &width, &decimals) != FTString) {
            continue;
        }
        const QString field = QString::fromLatin1(name).trimmed().toUpper();
        if (t.field != nullptr ? field == QLatin1String(t.field) : field.contains(u"POS")) {
            cells.push_back(i);
        }
    }
    int changed = 0;
    const int records = DBFGetRecordCount(dbf.get());
    for (int r = 0; r < records; ++r) {
        for (const int f : cells) {
            const char* raw = DBFReadStringAttribute(dbf.get(), r, f);
            const QString value = raw == nullptr ? QString() : cp1252::decode(QByteArray(raw));
            if (const std::optional<QString> replaced = edit(value)) {
                const QByteArray bytes = cp1252::encode(*replaced);
                if (DBFWriteStringAttribute(dbf.get(), r, f, bytes.constData())) {
                    ++changed;
                }
            }
        }
    }
    return changed;
}

bool replace_learner_post_number(shell::Session& session, LearnerFiles& files,
                                 const QStringList& year_folders, const QString& old_post,
                                 const QString& new_post,
                                 const std::function<void(int, int)>& progress) {
    const QString from = old_post.trimmed();
    const QString to = new_post.trimmed();
    if (from.isEmpty()) {
        return true;
    }
    const QString question =
        session.afrikaans
            ? QStringLiteral(
                  "MOET ALLE LEERDERREKORDS \n(ALGEMEEN, KLASSE, VAKKE, GEDRAG, "
                  "VOOGPOSTE)\nAANGEPAS WORD OM POSNOMMER ") +
                  from + QStringLiteral(" MET ") + to + QStringLiteral(" TE VERVANG?")
            : QStringLiteral(
                  "MUST ALL LEARNER RECORDS \n(GENERAL, CLASSES, SUBJECTS, BEHAVIOUR, "
                  "GUARDIANS)\n BE ADJUSTED TO REPLACE POST NUMBER ") +
                  from + QStringLiteral(" WITH ") + to + QStringLiteral("?");
    if (session.dialogs().ask(question, ui::Buttons::YesNo, ui::Icon::Question, ui::Answer::No) !=
        ui::Answer::Yes) {
        return false;
    }
    const auto edit = [&](const QString& cell) -> std::optional<QString> {
        if (post_number_matches(cell, from)) {
            return to;
        }
        return std::nullopt;
    };
    const int total = static_cast<int>(year_folders.size() * std::size(kLearnerTables));
    int done = 0;
    for (const QString& folder : year_folders) {
        for (const LearnerTable table : kLearnerTables) {
            files.rewrite_post_cells(folder, table, edit);
            if (progress) {
                progress(++done, total);
            }
        }
    }
    session.dialogs().message(
        session.afrikaans ? QStringLiteral("ALLE LEERDERREKORDS IS AANGEPAS EN POSNOMMER ") + from +
                                QStringLiteral(" IS MET ") + to + QStringLiteral(" VERVANG!")
                          : QStringLiteral("ALL LEARNER RECORDS WERE CHANGED AND POST NUMBER ") +
                                from + QStringLiteral(" REPLACED WITH ") + to + u'!');
    return true;
}

}  // namespace korvel::staff
