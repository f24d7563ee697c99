#include "reports/workbook_reader.h"

#include <freexl.h>
#include <zip.h>

#include <QDate>
#include <QFile>
#include <QXmlStreamReader>
#include <cmath>

namespace korvel::reports {

namespace {

const QDate kSerialZero(1899, 12, 30);

// "B17" -> row 17, column 2; false when it is no cell reference.
bool parse_reference(QStringView ref, int& row, int& column) {
    column = 0;
    qsizetype i = 0;
    while (i < ref.size() && ref[i].isLetter() && i < 3) {
        column = column * 26 + (ref[i].toUpper().unicode() - u'A' + 1);
        ++i;
    }
    bool ok = false;
    row = ref.mid(i).toInt(&ok);
    return ok && column > 0 && row > 0;
}

// ---- .xlsx ---------------------------------------------------------------------------------

class Zip {
  public:
    explicit Zip(const QByteArray& bytes) {
        zip_error_t error;
        zip_error_init(&error);
        zip_source_t* src = zip_source_buffer_create(
            bytes.constData(), static_cast<zip_uint64_t>(bytes.size()), 0, &error);
        if (src != nullptr) {
            zip_ = zip_open_from_source(src, ZIP_RDONLY, &error);
            if (zip_ == nullptr) {
                zip_source_free(src);
            }
        }
        zip_error_fini(&error);
    }
    ~Zip() {
        if (zip_ != nullptr) {
            zip_discard(zip_);
        }
    }
    bool ok() const { return zip_ != nullptr; }
    // A part whole, or nullopt when it is missing, too large, encrypted or damaged.
    std::optional<QByteArray> part(const QString& name, QString* why) const {
        const QByteArray n = name.toUtf8();
        zip_stat_t st;
        zip_stat_init(&st);
        if (zip_stat(zip_, n.constData(), 0, &st) != 0 || !(st.valid & ZIP_STAT_SIZE)) {
            return std::nullopt;
        }
        if (st.size > static_cast<zip_uint64_t>(WorkbookReader::kMaxPartBytes)) {
            *why = QStringLiteral("part %1 is too large").arg(name);
            return std::nullopt;
        }
        zip_file_t* f = zip_fopen(zip_, n.constData(), 0);
        if (f == nullptr) {
            *why = QStringLiteral("part %1 cannot be read").arg(name);
            return std::nullopt;
        }
        QByteArray out(static_cast<qsizetype>(st.size), Qt::Uninitialized);
        const zip_int64_t got = zip_fread(f, out.data(), st.size);
        zip_fclose(f);
        if (got != static_cast<zip_int64_t>(st.size)) {
            *why = QStringLiteral("part %1 is damaged").arg(name);
            return std::nullopt;
        }
        return out;
    }

  private:
    zip_t* zip_ = nullptr;
};

// The text of an element with its runs (<t>, <r><t>), up to its end; phonetic runs left out.
QString element_text(QXmlStreamReader& x) {
    const QString end = x.name().toString();
    QString text;
    int depth = 1;
    bool phonetic = false;
    while (depth > 0 && !x.atEnd()) {
        const QXmlStreamReader::TokenType t = x.readNext();
        if (t == QXmlStreamReader::StartElement) {
            ++depth;
            phonetic = phonetic || x.name() == u"rPh";
            if (x.name() == u"t" && !phonetic) {
                text += x.readElementText(QXmlStreamReader::IncludeChildElements);
                --depth;
            }
        } else if (t == QXmlStreamReader::EndElement) {
            --depth;
            if (x.name() == u"rPh") {
                phonetic = false;
            }
        }
    }
    return text;
}

}  // namespace

bool read_xlsx_bytes(const QByteArray& bytes, QHash<quint64, WorkbookCell>& cells, int& rows,
                     QString* why) {
    QString reason;
    why = why != nullptr ? why : &reason;
    Zip zip(bytes);
    if (!zip.ok()) {
        *why = QStringLiteral("not a workbook");
        return false;
    }
    // The workbook names its sheets in order; its relationships say where the first one is.
    const std::optional<QByteArray> workbook = zip.part(QStringLiteral("xl/workbook.xml"), why);
    const std::optional<QByteArray> rels =
        zip.part(QStringLiteral("xl/_rels/workbook.xml.rels"), why);
    if (!workbook || !rels) {
        if (why->isEmpty()) {
            *why = QStringLiteral("not a workbook");
        }
        return false;
    }
    QString first_id;
    for (QXmlStreamReader x(*workbook); !x.atEnd() && first_id.isEmpty();) {
        if (x.readNext() == QXmlStreamReader::StartElement && x.name() == u"sheet") {
            for (const QXmlStreamAttribute& a : x.attributes()) {
                if (a.name() == u"id") {
                    first_id = a.value().toString();
                }
            }
        }
    }
    QString target;
    for (QXmlStreamReader x(*rels); !x.atEnd() && target.isEmpty();) {
        if (x.readNext() == QXmlStreamReader::StartElement && x.name() == u"Relationship" &&
            x.attributes().value(QStringLiteral("Id")) == first_id) {
            target = x.attributes().value(QStringLiteral("Target")).toString();
        }
    }
    if (first_id.isEmpty() || target.isEmpty()) {
        *why = QStringLiteral("the workbook has no worksheet");
        return false;
    }
    target = target.startsWith(u'/') ? target.mid(1) : QStringLiteral("xl/") + target;

    QStringList shared;
    if (const std::optional<QByteArray> sst =
            zip.part(QStringLiteral("xl/sharedStrings.xml"), why)) {
        for (QXmlStreamReader x(*sst); !x.atEnd();) {
            if (x.readNext() == QXmlStreamReader::StartElement && x.name() == u"si") {
                shared << element_text(x);
            }
        }
    } else if (!why->isEmpty()) {
        return false;
    }

    const std::optional<QByteArray> sheet = zip.part(target, why);
    if (!sheet) {
        if (why->isEmpty()) {
            *why = QStringLiteral("the first worksheet is missing");
        }
        return false;
    }
    QXmlStreamReader x(*sheet);
    while (!x.atEnd()) {
        if (x.readNext() != QXmlStreamReader::StartElement || x.name() != u"c") {
            continue;
        }
        int row = 0;
        int column = 0;
        if (!parse_reference(x.attributes().value(QStringLiteral("r")), row, column)) {
            continue;
        }
        const QString type = x.attributes().value(QStringLiteral("t")).toString();
        QString value;
        QString inline_text;
        bool has_value = false;
        while (!x.atEnd()) {
            const QXmlStreamReader::TokenType t = x.readNext();
            if (t == QXmlStreamReader::EndElement && x.name() == u"c") {
                break;
            }
            if (t != QXmlStreamReader::StartElement) {
                continue;
            }
            if (x.name() == u"v") {
                value = x.readElementText();
                has_value = true;
            } else if (x.name() == u"is") {
                inline_text = element_text(x);
                has_value = true;
            }
        }
        if (!has_value || row > WorkbookReader::kMaxRows || column > WorkbookReader::kMaxColumns) {
            continue;
        }
        WorkbookCell c;
        if (type == u"s") {
            bool ok = false;
            const int i = value.toInt(&ok);
            if (!ok || i < 0 || i >= shared.size()) {
                continue;
            }
            c.kind = WorkbookCell::Kind::Text;
            c.text = shared.at(i);
        } else if (type == u"inlineStr") {
            c.kind = WorkbookCell::Kind::Text;
            c.text = inline_text;
        } else if (type == u"str" || type == u"e") {
            c.kind = WorkbookCell::Kind::Text;
            c.text = value;
        } else {
            bool ok = false;
            c.number = value.toDouble(&ok);
            if (!ok || !std::isfinite(c.number)) {
                continue;
            }
            c.kind = WorkbookCell::Kind::Number;
        }
        cells.insert((static_cast<quint64>(row) << 16) | static_cast<quint64>(column), c);
        rows = std::max(rows, row);
    }
    if (x.hasError() && x.error() != QXmlStreamReader::PrematureEndOfDocumentError) {
        *why = QStringLiteral("the first worksheet is damaged");
        return false;
    }
    return true;
}

namespace {

class XlsxReader : public WorkbookReader {
  public:
    bool open(const QString& native_path, QString* why) override {
        QFile f(native_path);
        if (!f.open(QIODevice::ReadOnly)) {
            *why = QStringLiteral("cannot be read");
            return false;
        }
        if (f.size() > kMaxPartBytes) {
            *why = QStringLiteral("too large");
            return false;
        }
        return read_xlsx_bytes(f.readAll(), cells_, rows_, why);
    }
};

// ---- .xls ----------------------------------------------------------------------------------

class XlsReader : public WorkbookReader {
  public:
    bool open(const QString& native_path, QString* why) override {
        const void* handle = nullptr;
        const QByteArray path = QFile::encodeName(native_path);
        if (freexl_open(path.constData(), &handle) != FREEXL_OK) {
            if (handle != nullptr) {
                freexl_close(handle);
            }
            *why = QStringLiteral("not a workbook, or damaged");
            return false;
        }
        const auto done = [&handle](bool ok) {
            freexl_close(handle);
            return ok;
        };
        unsigned int info = 0;
        if (freexl_get_info(handle, FREEXL_BIFF_PASSWORD, &info) == FREEXL_OK &&
            info != FREEXL_BIFF_PLAIN) {
            *why = QStringLiteral("the workbook is protected by a password");
            return done(false);
        }
        unsigned int rows = 0;
        unsigned short columns = 0;
        if (freexl_select_active_worksheet(handle, 0) != FREEXL_OK ||
            freexl_worksheet_dimensions(handle, &rows, &columns) != FREEXL_OK) {
            *why = QStringLiteral("the workbook has no worksheet");
            return done(false);
        }
        rows = std::min<unsigned int>(rows, kMaxRows);
        columns = std::min<unsigned short>(columns, kMaxColumns);
        for (unsigned int r = 0; r < rows; ++r) {
            for (unsigned short c = 0; c < columns; ++c) {
                FreeXL_CellValue v;
                if (freexl_get_cell_value(handle, r, c, &v) != FREEXL_OK) {
                    continue;
                }
                WorkbookCell cell;
                switch (v.type) {
                    case FREEXL_CELL_INT:
                        cell.kind = WorkbookCell::Kind::Number;
                        cell.number = v.value.int_value;
                        break;
                    case FREEXL_CELL_DOUBLE:
                        cell.kind = WorkbookCell::Kind::Number;
                        cell.number = v.value.double_value;
                        break;
                    case FREEXL_CELL_TEXT:
                    case FREEXL_CELL_SST_TEXT:
                        cell.kind = WorkbookCell::Kind::Text;
                        cell.text = QString::fromUtf8(v.value.text_value);
                        break;
                    case FREEXL_CELL_DATE:
                    case FREEXL_CELL_DATETIME: {
                        const QDate d = QDate::fromString(
                            QString::fromLatin1(v.value.text_value).left(10), Qt::ISODate);
                        if (!d.isValid()) {
                            continue;
                        }
                        cell.kind = WorkbookCell::Kind::Date;
                        cell.number = static_cast<double>(kSerialZero.daysTo(d));
                        break;
                    }
                    default:
                        continue;
                }
                put(static_cast<int>(r) + 1, c + 1, cell);
            }
        }
        return done(true);
    }
};

}  // namespace

QString WorkbookCell::as_text() const {
    switch (kind) {
        case Kind::Empty:
            return {};
        case Kind::Text:
            return text;
        case Kind::Number:
        case Kind::Date: {
            // Whole numbers as their digits; others with as few decimals as they need.
            if (std::fabs(number) < 1e15 && number == std::floor(number)) {
                return QString::number(static_cast<qint64>(number));
            }
            QString s = QString::number(number, 'f', 10);
            while (s.contains(u'.') && (s.endsWith(u'0') || s.endsWith(u'.'))) {
                s.chop(1);
            }
            return s;
        }
    }
    return {};
}

void WorkbookReader::put(int row, int column, WorkbookCell c) {
    cells_.insert(key(row, column), std::move(c));
    rows_ = std::max(rows_, row);
}

std::unique_ptr<WorkbookReader> open_workbook(const QString& native_path, QString* why) {
    QFile f(native_path);
    if (!f.open(QIODevice::ReadOnly)) {
        *why = QStringLiteral("cannot be read");
        return nullptr;
    }
    const QByteArray head = f.read(8);
    f.close();
    std::unique_ptr<WorkbookReader> reader;
    if (head.startsWith("PK\x03\x04")) {
        reader = std::make_unique<XlsxReader>();
    } else if (head == QByteArray::fromHex("D0CF11E0A1B11AE1")) {
        reader = std::make_unique<XlsReader>();
    } else {
        *why = QStringLiteral("not a workbook");
        return nullptr;
    }
    if (!reader->open(native_path, why)) {
        return nullptr;
    }
    return reader;
}

}  // namespace korvel::reports
