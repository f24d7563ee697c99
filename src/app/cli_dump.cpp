#include "app/cli_dump.h"

#include "store/record.h"

namespace korvel::app {

using store::Field;
using store::FieldType;
using store::Record;

namespace {

QString slot_name(const Field& f, int index) {
    const QString name = QString::fromLatin1(f.name.data(), f.name.size());
    if (f.count == 1) {
        return name;
    }
    if (f.dim1 > 0) {
        return QStringLiteral("%1(%2,%3)").arg(name).arg(index % f.dim1).arg(index / f.dim1);
    }
    return QStringLiteral("%1(%2)").arg(name).arg(index);
}

QString date_text(const Record& r, const Field& f, int index) {
    const std::optional<QDate> d = r.date(f, index);
    return d ? d->toString(QStringLiteral("yyyy.MM.dd")) : QString();
}

QString csv_value(const Record& r, const Field& f, int index);

QString json_string(const QString& value) {
    QString out = QStringLiteral("\"");
    for (const QChar c : value) {
        switch (c.unicode()) {
            case '"':
                out += QStringLiteral("\\\"");
                break;
            case '\\':
                out += QStringLiteral("\\\\");
                break;
            case '\n':
                out += QStringLiteral("\\n");
                break;
            case '\r':
                out += QStringLiteral("\\r");
                break;
            case '\t':
                out += QStringLiteral("\\t");
                break;
            default:
                if (c.unicode() < 0x20) {
                    out += QStringLiteral("\\u%1").arg(c.unicode(), 4, 16, QChar(u'0'));
                } else {
                    out += c;
                }
        }
    }
    return out + u'"';
}

QString json_value(const Record& r, const Field& f, int index) {
    switch (f.type) {
        case FieldType::Int16:
            return QString::number(r.int16(f, index));
        case FieldType::Byte:
            return QString::number(r.byte(f));
        default:
            return json_string(csv_value(r, f, index));
    }
}

QString csv_value(const Record& r, const Field& f, int index) {
    switch (f.type) {
        case FieldType::Text:
            return r.text(f, index);
        case FieldType::Int16:
            return QString::number(r.int16(f, index));
        case FieldType::Byte:
            return QString::number(r.byte(f));
        case FieldType::Date:
            return date_text(r, f, index);
        case FieldType::Raw:
            return QString::fromLatin1(r.raw(f, index).toHex());
    }
    return {};
}

QString csv_quote(const QString& value) {
    if (!value.contains(u',') && !value.contains(u'"') && !value.contains(u'\n') &&
        !value.contains(u'\r')) {
        return value;
    }
    QString q = value;
    q.replace(u'"', QStringLiteral("\"\""));
    return u'"' + q + u'"';
}

}  // namespace

QStringList dump_columns(const store::Layout& layout) {
    QStringList out;
    for (const Field& f : layout.fields) {
        for (int i = 0; i < f.count; ++i) {
            out << slot_name(f, i);
        }
    }
    return out;
}

void dump_records(store::RecordFile& file, const store::Layout& layout, DumpFormat format,
                  QTextStream& out) {
    Record r(layout);
    if (format == DumpFormat::Csv) {
        out << "record," << dump_columns(layout).join(u',') << "\n";
    } else {
        out << "[";
    }
    bool first = true;
    file.scan(1, file.count(), [&](int number, const char* bytes) {
        r.assign(bytes);
        if (format == DumpFormat::Csv) {
            out << number;
            for (const Field& f : layout.fields) {
                for (int i = 0; i < f.count; ++i) {
                    out << u',' << csv_quote(csv_value(r, f, i));
                }
            }
            out << "\n";
        } else {
            out << (first ? "\n" : ",\n") << "{\"record\":" << number;
            for (const Field& f : layout.fields) {
                out << ",\"" << QLatin1String(f.name.data(), f.name.size()) << "\":";
                if (f.count == 1) {
                    out << json_value(r, f, 0);
                    continue;
                }
                out << u'[';
                for (int i = 0; i < f.count; ++i) {
                    out << (i ? "," : "") << json_value(r, f, i);
                }
                out << u']';
            }
            out << u'}';
        }
        first = false;
        return true;
    });
    if (format == DumpFormat::Json) {
        out << "\n]\n";
    }
}

}  // namespace korvel::app
