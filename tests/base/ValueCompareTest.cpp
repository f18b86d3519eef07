#include <limits>
#include <memory>

#include "base/Value.h"
#include "support/Raised.h"

namespace quarv {

namespace {

using Order = std::partial_ordering;

Decimal Exact(const QString& text) {
    return Decimal::Parse(text).value();
}

void ExpectOrder(const Value& a, const Value& b, Order order) {
    EXPECT_TRUE(Value::Compare(a, b) == order);
    EXPECT_TRUE(Value::Compare(b, a) == (0 <=> order));
    EXPECT_EQ(Value::Equal(a, b), order == Order::equivalent);
}

}  // namespace

TEST(ValueCompare, NumbersCompareAcrossKinds) {
    ExpectOrder(5, 5, Order::equivalent);
    ExpectOrder(5, Exact("5.00"), Order::equivalent);
    ExpectOrder(5, 5.0, Order::equivalent);
    ExpectOrder(5, 5.5f, Order::less);
    ExpectOrder(-5, -5.5, Order::greater);
    ExpectOrder(Exact("0.1"), 0.1, Order::equivalent);
    ExpectOrder(true, -1, Order::equivalent);
    ExpectOrder(false, Exact("0.0"), Order::equivalent);
    ExpectOrder(true, 0.5, Order::less);
    ExpectOrder(1.0f, 2.0, Order::less);
    ExpectOrder(std::numeric_limits<qint64>::min(), Exact("-9223372036854775809"), Order::greater);
}

TEST(ValueCompare, BigIntegersKeepTheirLastDigitBesideFloats) {
    ExpectOrder(9007199254740993, 9007199254740992.0, Order::greater);
    ExpectOrder(std::numeric_limits<qint64>::max(), 9223372036854775808.0, Order::less);
    ExpectOrder(std::numeric_limits<qint64>::min(), -9223372036854775808.0, Order::equivalent);
    ExpectOrder(std::numeric_limits<qint64>::min(), -1e300, Order::greater);
    ExpectOrder(0, std::numeric_limits<double>::quiet_NaN(), Order::unordered);
}

TEST(ValueCompare, TextsCompareByCodeUnits) {
    ExpectOrder(Value(u"a"), Value(u"a"), Order::equivalent);
    ExpectOrder(Value(u"a"), Value(u"A"), Order::greater);
    ExpectOrder(Value(u"a"), Value(u"ab"), Order::less);
    ExpectOrder(Value(u"\u00e9"), Value(u"e\u0301"), Order::greater);
}

TEST(ValueCompare, EmptyCountsAsZeroOrEmptyText) {
    ExpectOrder(Value(), Value(), Order::equivalent);
    ExpectOrder(Value(), 0, Order::equivalent);
    ExpectOrder(Value(), 1, Order::less);
    ExpectOrder(Value(), false, Order::equivalent);
    ExpectOrder(Value(), Value(u""), Order::equivalent);
    ExpectOrder(Value(), Value(u"a"), Order::less);
    ExpectOrder(Value(), DateTime(), Order::unordered);
    ExpectOrder(Value(), Value(ObjectRef()), Order::unordered);
}

TEST(ValueCompare, NumberIsLessThanText) {
    ExpectOrder(5, Value(u"5"), Order::less);
    ExpectOrder(Exact("99"), Value(u""), Order::less);
}

TEST(ValueCompare, NullEqualsNothing) {
    ExpectOrder(Value::Null(), Value::Null(), Order::unordered);
    ExpectOrder(Value::Null(), Value(), Order::unordered);
    ExpectOrder(Value::Null(), 0, Order::unordered);
    ExpectOrder(Value::Null(), Value(u""), Order::unordered);
}

TEST(ValueCompare, ObjectsCompareByIdentity) {
    struct Thing : Object {};
    const ObjectRef one = std::make_shared<Thing>();
    const ObjectRef other = std::make_shared<Thing>();
    ExpectOrder(Value(one), Value(one), Order::equivalent);
    ExpectOrder(Value(one), Value(Borrow(one.get())), Order::equivalent);
    ExpectOrder(Value(one), Value(other), Order::unordered);
    ExpectOrder(Value(ObjectRef()), Value(ObjectRef()), Order::equivalent);
    ExpectOrder(Value(one), 1, Order::unordered);
}

TEST(ValueCompare, BytesAndDatesCompareWithTheirLike) {
    ExpectOrder(Value(QByteArray("\x7f")), Value(QByteArray("\x80")), Order::less);
    ExpectOrder(Value(QByteArray("a")), Value(QByteArray("a")), Order::equivalent);
    ExpectOrder(Value(QByteArray("a")), Value(u"a"), Order::unordered);
    ExpectOrder(DateTime{.day = 2}, DateTime{.day = 3}, Order::less);
    ExpectOrder(DateTime(), 0, Order::unordered);
}

}  // namespace quarv
