#include "platform/ado/CellSink.h"

#include <gtest/gtest.h>

#include "base/RuntimeError.h"
#include "platform/ado/MemoryConnection.h"
#include "platform/ado/WrittenRow.h"
#include "support/TextPrinter.h"

namespace quarv::test {

namespace {

// What was appended, call by call.
class Calls : public ado::CellSink {
  public:
    QStringList list;

    void AppendEmpty() override { list << "empty"; }
    void AppendNull() override { list << "null"; }
    void AppendBoolean(bool value) override { list << (value ? "true" : "false"); }
    void AppendInteger(qint64 value) override { list << QStringLiteral("integer %1").arg(value); }
    void AppendSingle(float value) override { Add("single", value); }
    void AppendFloating(double value) override { Add("floating", value); }
    void AppendDecimal(const Decimal& value) override { list << "decimal " + value.ToText(); }
    void AppendText(QStringView value) override { list << "text " + value.toString(); }
    void AppendDateTime(const DateTime& value) override { list << "date " + value.ToIsoText(); }
    void AppendBytes(QByteArrayView value) override {
        list << "bytes " + QString::fromLatin1(value.toByteArray().toHex());
    }

  private:
    template <class T>
    void Add(const QString& name, T value) {
        list << name + ' ' + Value(value).ToText(QLocale::c());
    }
};

// Every kind that a row can hold.
ado::MemoryResult::Row EveryKind() {
    return {Value(),
            Value::Null(),
            true,
            false,
            qint64{-9223372036854775807},
            0.1F,
            0.1,
            *Decimal::Parse(u"-1.50"),
            QStringLiteral(u"d\u20AC"),
            *DateTime::ParseIso(u"2024-01-02 03:04:05.1234567 +05:30"),
            QByteArray("\x00\xFF", 2)};
}

const QStringList EveryCall = {"empty",
                               "null",
                               "true",
                               "false",
                               "integer -9223372036854775807",
                               "single 0.1",
                               "floating 0.1",
                               "decimal -1.50",
                               QStringLiteral(u"text d\u20AC"),
                               "date 2024-01-02 03:04:05.1234567 +05:30",
                               "bytes 00ff"};

}  // namespace

TEST(CellSink, ValueGoesToTheCallOfItsKind) {
    Calls calls;
    for (const Value& value : EveryKind()) calls.Append(value);
    EXPECT_EQ(calls.list, EveryCall);
}

TEST(CellSink, ObjectIsRefusedAndNotAppended) {
    Calls calls;
    try {
        calls.Append(ObjectRef());
        ADD_FAILURE() << "nothing was raised";
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.Number(), 13);
    }
    EXPECT_TRUE(calls.list.isEmpty());
}

TEST(CellSink, MemoryRecordSetWritesEveryKind) {
    ado::MemoryConnection connection;
    QStringList names;
    while (names.size() < EveryCall.size()) names << "c";
    connection.Script().Answer("select", ado::MemoryResult::Rows(names, {EveryKind()}));
    connection.Open();
    const auto rows = connection.Execute("select");
    Calls calls;
    rows->WriteRow(calls);
    EXPECT_EQ(calls.list, EveryCall);
    rows->WriteRow(calls);
    EXPECT_EQ(calls.list, EveryCall + EveryCall) << "asking again gives the same";
}

}  // namespace quarv::test
