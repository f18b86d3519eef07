#include "RecordingSink.h"

#include <QDateTime>

namespace quarv::localdb::engine {

namespace {

QString DecimalText(const Datum& datum, int scale) {
    QString digits;
    for (UInt128 rest = datum.magnitude; rest != 0; rest /= 10) {
        digits.prepend(QChar(u'0' + static_cast<int>(rest % 10)));
    }
    digits = digits.rightJustified(scale + 1, u'0');
    if (scale > 0) digits.insert(digits.size() - scale, u'.');
    return (datum.negative ? QStringLiteral("-") : QString()) + digits;
}

QString MoneyText(int64_t money) {
    const QString sign = money < 0 ? QStringLiteral("-") : QString();
    const int64_t magnitude = money < 0 ? -money : money;
    return sign + QString::number(magnitude / 10000) + u'.' +
           QString::number(magnitude % 10000).rightJustified(4, u'0');
}

QString DateTimeText(int64_t thirds) {
    const int64_t perDay = 300LL * 60 * 60 * 24;
    int64_t days = thirds / perDay;
    if (thirds % perDay < 0) --days;
    const int64_t rest = thirds - days * perDay;
    const QTime time = QTime::fromMSecsSinceStartOfDay(static_cast<int>((rest * 10 + 1) / 3));
    return QDate(1900, 1, 1).addDays(days).toString(QStringLiteral("yyyy-MM-dd")) + u' ' +
           time.toString(QStringLiteral("hh:mm:ss.zzz"));
}

QString DayText(int64_t days) {
    return QDate(1, 1, 1).addDays(days).toString(QStringLiteral("yyyy-MM-dd"));
}

// `ticks` are 100 ns since midnight.
QString ClockText(int64_t ticks, int scale) {
    const QString whole = QTime(0, 0).addSecs(static_cast<int>(ticks / 10'000'000)).toString();
    const QString digits = QString::number(ticks % 10'000'000).rightJustified(7, u'0');
    return scale > 0 ? whole + u'.' + digits.left(scale) : whole;
}

QString TicksText(int64_t ticks, int scale) {
    constexpr int64_t PerDay = 864'000'000'000;
    return DayText(ticks / PerDay) + u' ' + ClockText(ticks % PerDay, scale);
}

QString OffsetText(const Datum& datum, int scale) {
    const int minutes = datum.offsetMinutes < 0 ? -datum.offsetMinutes : datum.offsetMinutes;
    return TicksText(datum.integer + datum.offsetMinutes * int64_t{600'000'000}, scale) + u' ' +
           (datum.offsetMinutes < 0 ? u'-' : u'+') +
           QString::number(minutes / 60).rightJustified(2, u'0') + u':' +
           QString::number(minutes % 60).rightJustified(2, u'0');
}

QString HexText(std::span<const std::byte> bytes) {
    const QByteArray array(reinterpret_cast<const char*>(bytes.data()),
                           static_cast<qsizetype>(bytes.size()));
    return QStringLiteral("0x") + QString::fromLatin1(array.toHex().toUpper());
}

// From the order of sorting: the last group first, each of the first three groups backwards.
QString GuidText(std::span<const std::byte> bytes) {
    const QString hex = HexText(bytes).mid(2);
    const auto pairs = [&hex](std::initializer_list<int> places) {
        QString text;
        for (const int place : places) text += hex.mid(2 * place, 2);
        return text;
    };
    return pairs({15, 14, 13, 12}) + u'-' + pairs({11, 10}) + u'-' + pairs({9, 8}) + u'-' +
           pairs({6, 7}) + u'-' + pairs({0, 1, 2, 3, 4, 5});
}

}  // namespace

QString DatumText(const SqlType& type, const Datum& datum) {
    if (datum.null) return QStringLiteral("NULL");
    switch (type.kind) {
        case TypeKind::Decimal:
        case TypeKind::Numeric:
            return DecimalText(datum, type.scale);
        case TypeKind::Money:
        case TypeKind::SmallMoney:
            return MoneyText(datum.integer);
        case TypeKind::Real:
        case TypeKind::Float:
            return QString::number(datum.real, 'g', 15);
        case TypeKind::DateTime:
            return DateTimeText(datum.integer);
        case TypeKind::SmallDateTime:
            return DateTimeText(datum.integer * 18000);
        case TypeKind::Date:
            return DayText(datum.integer);
        case TypeKind::Time:
            return ClockText(datum.integer, type.scale);
        case TypeKind::DateTime2:
            return TicksText(datum.integer, type.scale);
        case TypeKind::DateTimeOffset:
            return OffsetText(datum, type.scale);
        case TypeKind::UniqueIdentifier:
            return GuidText(datum.bytes);
        case TypeKind::Binary:
        case TypeKind::VarBinary:
        case TypeKind::Image:
        case TypeKind::RowVersion:
            return HexText(datum.bytes);
        case TypeKind::Char:
        case TypeKind::VarChar:
        case TypeKind::NChar:
        case TypeKind::NVarChar:
        case TypeKind::Text:
        case TypeKind::NText:
        case TypeKind::Xml:
            return QString::fromUtf8(datum.text.data(), static_cast<qsizetype>(datum.text.size()));
        default:
            return QString::number(datum.integer);
    }
}

void RecordingSink::BeginRows(std::span<const Column> columns) {
    types_.clear();
    QStringList parts;
    for (const Column& column : columns) {
        types_.push_back(column.type);
        QString part = column.name.isEmpty() ? QStringLiteral("-") : column.name;
        part += u' ' + column.type.ToText();
        if (!column.nullable) part += QStringLiteral(" not null");
        if (column.identity) part += QStringLiteral(" identity");
        parts += part;
    }
    lines += QStringLiteral("columns ") + parts.join(QStringLiteral(", "));
}

void RecordingSink::Row(std::span<const Datum> row) {
    ++rows;
    if (!keepRows) return;
    QStringList parts;
    for (size_t i = 0; i < row.size(); ++i) parts += DatumText(types_[i], row[i]);
    lines += parts.join(QStringLiteral(" | "));
}

void RecordingSink::StatementDone(StatementKind kind, int64_t rowCount, bool failed) {
    if (failed) {
        lines += QStringLiteral("(failed)");
    } else if (kind == StatementKind::Execute) {
        lines += QStringLiteral("(executed)");
    } else if (rowCount < 0) {
        lines += QStringLiteral("(done)");
    } else {
        lines += QStringLiteral("(%1 %2)").arg(rowCount).arg(rowCount == 1 ? "row" : "rows");
    }
}

void RecordingSink::Say(const Message& message) {
    messages.push_back(message);
    const QString place =
        message.procedure.isEmpty() ? QString() : QStringLiteral(" in ") + message.procedure;
    if (message.number == 0) {
        lines += QStringLiteral("print: ") + message.text;
    } else if (message.severity < 11) {
        lines += QStringLiteral("message %1%2 line %3: %4")
                     .arg(message.number)
                     .arg(place)
                     .arg(message.line)
                     .arg(message.text);
    } else {
        lines += QStringLiteral("error %1 %2 %3%4 line %5: %6")
                     .arg(message.number)
                     .arg(message.severity)
                     .arg(message.state)
                     .arg(place)
                     .arg(message.line)
                     .arg(message.text);
    }
}

void RecordingSink::DatabaseChanged(const QString& now, const QString& before) {
    lines += QStringLiteral("database %1 -> %2").arg(before, now);
}

void RecordingSink::ReturnStatus(int status) {
    lines += QStringLiteral("status %1").arg(status);
}

void RecordingSink::ReturnValue(const QString& name, const SqlType& type, const Datum& value) {
    lines += QStringLiteral("value %1 %2: %3").arg(name, type.ToText(), DatumText(type, value));
}

void RecordingSink::TransactionBegan(uint64_t) {
    lines += QStringLiteral("transaction begins");
}

void RecordingSink::TransactionEnded(uint64_t, bool committed) {
    lines += committed ? QStringLiteral("transaction commits")
                       : QStringLiteral("transaction rolls back");
}

int RecordingSink::FirstError() const {
    for (const Message& message : messages) {
        if (message.severity > 10) return message.number;
    }
    return 0;
}

}  // namespace quarv::localdb::engine
