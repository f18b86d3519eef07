// Rows of which a driver cannot make a value, which no memory record set has.
#include "platform/ado/DataControl.h"
#include "platform/ado/ErrorOf.h"
#include "platform/ado/MemoryConnection.h"

namespace quarv::test {

namespace {

// Three rows of two columns; the second value of row `bad` cannot be read.
class Unreadable : public ado::Recordset, private ado::Fields {
  public:
    Unreadable(int bad, QString sqlState)
        : bad_(bad), sqlState_(std::move(sqlState)), first_(*this, 0), second_(*this, 1) {}

    ado::ObjectState State() const override { return ado::adStateOpen; }
    bool EOF() const override { return row_ == 3; }
    void MoveNext() override { ++row_; }
    const ado::Fields& Fields() const override { return *this; }
    ado::RecordsetPtr NextRecordset() override { return nullptr; }
    void Close() override {}

  private:
    class Column : public ado::Field {
      public:
        Column(const Unreadable& owner, int index) : owner_(owner), index_(index) {}
        QString Name() const override { return QString::number(index_); }
        quarv::Value Value() const override {
            if (index_ == 1 && owner_.row_ == owner_.bad_)
                throw DataError(-1, QStringLiteral("unreadable"), owner_.sqlState_);
            return owner_.row_ * 10 + index_;
        }

      private:
        const Unreadable& owner_;
        int index_;
    };

    int Count() const override { return 2; }
    const ado::Field& operator[](int index) const override { return index ? second_ : first_; }
    const ado::Field& operator[](const QString&) const override { return first_; }

    int row_ = 0;
    int bad_;
    QString sqlState_;
    Column first_;
    Column second_;
};

class UnreadableConnection : public ado::MemoryConnection {
  public:
    explicit UnreadableConnection(QString sqlState) : sqlState_(std::move(sqlState)) {}
    ado::RecordsetPtr Execute(const QString& sql, int) override {
        return std::make_shared<Unreadable>(sql.toInt(), sqlState_);
    }

  private:
    QString sqlState_;
};

ado::DataControl ControlOver(const QString& sqlState, const QString& sql) {
    ado::DataControl control(
        [sqlState] { return std::make_shared<UnreadableConnection>(sqlState); });
    control.SetRecordSource(sql);
    control.Refresh();
    return control;
}

}  // namespace

TEST(DataControlUnreadable, RowIsLeftOutAndTheNextCallGoesOnBehindIt) {
    ado::DataControl control = ControlOver("22003", "1");
    EXPECT_EQ(ErrorOf([&] { control.ReadTo(100); }).Description(), QStringLiteral("unreadable"));
    EXPECT_EQ(control.RowCount(), 1);
    EXPECT_FALSE(control.AtEnd());
    control.ReadTo(100);
    EXPECT_EQ(control.RowCount(), 2);
    EXPECT_TRUE(control.AtEnd());
    EXPECT_EQ(control.ValueAt(0, 1).ToInteger(), 1);
    EXPECT_EQ(control.ValueAt(1, 0).ToInteger(), 20);
    EXPECT_EQ(control.ValueAt(1, 1).ToInteger(), 21);
}

TEST(DataControlUnreadable, LossWithinARowEndsTheResult) {
    ado::DataControl control = ControlOver("08S01", "2");
    EXPECT_EQ(ErrorOf([&] { control.ReadTo(100); }).Description(), QStringLiteral("unreadable"));
    EXPECT_EQ(control.RowCount(), 2);
    EXPECT_TRUE(control.AtEnd());
    control.ReadTo(100);
}

}  // namespace quarv::test
