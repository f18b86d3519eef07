#include "base/Value.h"

#include <limits>
#include <memory>

#include "base/RuntimeError.h"
#include "support/Raised.h"

namespace quarv {

namespace {

struct Thing : Object {};

Decimal Exact(const QString& text) {
    return Decimal::Parse(text).value();
}

// Sets the locale that conversions without one use, for one test.
struct DefaultLocale {
    explicit DefaultLocale(const char* name) { QLocale::setDefault(QLocale(name)); }
    ~DefaultLocale() { QLocale::setDefault(QLocale::c()); }
};

}  // namespace

TEST(Value, KnowsItsKind) {
    EXPECT_EQ(Value().kind(), Value::Kind::Empty);
    EXPECT_EQ(Value::Null().kind(), Value::Kind::Null);
    EXPECT_EQ(Value(true).kind(), Value::Kind::Boolean);
    EXPECT_EQ(Value(5).kind(), Value::Kind::Integer);
    EXPECT_EQ(Value(1.5f).kind(), Value::Kind::Single);
    EXPECT_EQ(Value(1.5).kind(), Value::Kind::Floating);
    EXPECT_EQ(Value(Exact("1.5")).kind(), Value::Kind::Decimal);
    EXPECT_EQ(Value(u"x").kind(), Value::Kind::Text);
    EXPECT_EQ(Value(DateTime()).kind(), Value::Kind::DateTime);
    EXPECT_EQ(Value(QByteArray("x")).kind(), Value::Kind::Bytes);
    EXPECT_EQ(Value(ObjectRef()).kind(), Value::Kind::Object);
    EXPECT_TRUE(Value().IsEmpty());
    EXPECT_TRUE(Value::Null().IsNull());
    EXPECT_TRUE(Value(ObjectRef()).IsObject());
}

struct TextCase {
    Value value;
    const char16_t* c;
    const char16_t* german;
    const char16_t* arabic;  // its decimal sign is U+066B
};

TEST(Value, BecomesTextByLocale) {
    const TextCase cases[] = {
        {Value(), u"", u"", u""},
        {true, u"True", u"True", u"True"},
        {false, u"False", u"False", u"False"},
        {-1234567, u"-1234567", u"-1234567", u"-1234567"},
        {std::numeric_limits<qint64>::min(), u"-9223372036854775808", u"-9223372036854775808",
         u"-9223372036854775808"},
        {Exact("-1234.50"), u"-1234.50", u"-1234,50", u"-1234\u066B50"},
        {Exact("0.00"), u"0.00", u"0,00", u"0\u066B00"},
        {0.1f, u"0.1", u"0,1", u"0\u066B1"},
        {0.1, u"0.1", u"0,1", u"0\u066B1"},
        {1234567.25, u"1234567.25", u"1234567,25", u"1234567\u066B25"},
        {1.5e20, u"1.5E+20", u"1,5E+20", u"1\u066B5E+20"},
        {Value(u"1.5"), u"1.5", u"1.5", u"1.5"},
        {Value(QByteArray("\x00\xab\x7f", 3)), u"0x00AB7F", u"0x00AB7F", u"0x00AB7F"},
        {Value(QByteArray()), u"0x", u"0x", u"0x"},
        {DateTime{.month = 2, .day = 9, .hour = 13, .minute = 5, .year = 2024},
         u"9 Feb 2024 13:05:00", u"09.02.2024 13:05:00",
         u"\u0669\u200F/\u0662\u200F/\u0662\u0660\u0662\u0664 "
         u"\u0661:\u0660\u0665:\u0660\u0660 \u0645"},
    };
    for (const TextCase& each : cases) {
        EXPECT_EQ(each.value.ToText(QLocale::c()), QString::fromUtf16(each.c));
        EXPECT_EQ(each.value.ToText(QLocale("de_DE")), QString::fromUtf16(each.german));
        EXPECT_EQ(each.value.ToText(QLocale("ar_EG")), QString::fromUtf16(each.arabic));
    }
}

TEST(Value, UsesTheDefaultLocaleWhereNoneIsGiven) {
    const DefaultLocale german("de_DE");
    EXPECT_EQ(Value(1.5).ToText(), "1,5");
}

TEST(Value, FloatsAreWrittenWithTheFewestDigitsThatReadBack) {
    const std::pair<Value, const char*> cases[] = {
        {0.0, "0"},
        {-0.0, "-0"},
        {100000.0, "100000"},
        {1e15, "1000000000000000"},
        {1e16, "1E+16"},
        {0.00001, "0.00001"},
        {0.000001, "1E-06"},
        {1.0 / 3.0, "0.3333333333333333"},
        {1.0f / 3.0f, "0.33333334"},
        {16777216.0f, "16777216"},
        {-2.5, "-2.5"},
        {std::numeric_limits<double>::max(), "1.7976931348623157E+308"},
        {std::numeric_limits<double>::denorm_min(), "5E-324"},
        {std::numeric_limits<double>::infinity(), "Infinity"},
        {-std::numeric_limits<double>::infinity(), "-Infinity"},
        {std::numeric_limits<double>::quiet_NaN(), "NaN"},
    };
    for (const auto& [value, text] : cases) EXPECT_EQ(value.ToText(QLocale::c()), text);
}

TEST(Value, NullAndObjectsHaveNoText) {
    EXPECT_EQ(Raised([] { Value::Null().ToText(); }), 94);
    EXPECT_EQ(Raised([] { Value(ObjectRef()).ToText(); }), 13);
}

TEST(Value, BecomesIntegerRoundedHalfToEven) {
    const std::pair<Value, qint64> cases[] = {
        {Value(), 0},
        {true, -1},
        {false, 0},
        {7, 7},
        {2.5, 2},
        {3.5, 4},
        {-2.5, -2},
        {-3.5, -4},
        {2.5f, 2},
        {0.49999999999999994, 0},
        {Exact("2.5"), 2},
        {Exact("2.50001"), 3},
        {Exact("3.5"), 4},
        {Exact("-3.5"), -4},
        {Exact("-0.5"), 0},
        {Exact("9223372036854775807.4"), 9223372036854775807},
        {Exact("-9223372036854775808"), std::numeric_limits<qint64>::min()},
        {Value(u"9223372036854775807"), 9223372036854775807},
        {Value(u" 12.5 "), 12},
        {Value(u"+3"), 3},
        {Value(u"1e3"), 1000},
        {Value(u".5"), 0},
        {Value(u"-1.5E+1"), -15},
    };
    for (const auto& [value, number] : cases) EXPECT_EQ(value.ToInteger(), number);
}

TEST(Value, RaisesWhereItIsNoInteger) {
    const std::pair<Value, int> cases[] = {
        {Value::Null(), 94},
        {Value(ObjectRef()), 13},
        {Value(QByteArray("1")), 13},
        {DateTime(), 13},
        {Value(u""), 13},
        {Value(u"abc"), 13},
        {Value(u"1 2"), 13},
        {Value(u"+-1"), 13},
        {Value(u"1,5"), 13},
        {Value(u"nan"), 13},
        {Value(u"inf"), 13},
        {Value(u"True"), 13},
        {Value(u"1e400"), 6},
        {Value(u"1e-400"), 6},
        {Value(u"9223372036854775808"), 6},
        {9223372036854775808.0, 6},
        {std::numeric_limits<double>::quiet_NaN(), 6},
        {Exact("9223372036854775807.5"), 6},
        {Exact("-9223372036854775808.6"), 6},
    };
    for (const auto& [value, number] : cases) {
        EXPECT_EQ(Raised([&value = value] { value.ToInteger(); }), number);
    }
}

TEST(Value, BecomesDoubleWithoutRounding) {
    EXPECT_EQ(Value(2.5f).ToDouble(), 2.5);
    EXPECT_EQ(Value(Exact("0.1")).ToDouble(), 0.1);
    EXPECT_EQ(Value(u"1.25").ToDouble(), 1.25);
    EXPECT_EQ(Value(true).ToDouble(), -1.0);
    EXPECT_EQ(Raised([] { Value(u"x").ToDouble(); }), 13);
}

TEST(Value, TextsAreNumbersInTheDefaultLocale) {
    const DefaultLocale german("de_DE");
    EXPECT_EQ(Value(u"1,5").ToDouble(), 1.5);
    EXPECT_EQ(Value(u"1.5").ToDouble(), 1.5);
    EXPECT_EQ(Raised([] { Value(u"1.000,5").ToDouble(); }), 13);
}

TEST(Value, BecomesBoolean) {
    EXPECT_TRUE(Value(0.4).ToBoolean());
    EXPECT_TRUE(Value(Exact("0.1")).ToBoolean());
    EXPECT_FALSE(Value(Exact("0.00")).ToBoolean());
    EXPECT_FALSE(Value().ToBoolean());
    EXPECT_TRUE(Value(u"tRUE").ToBoolean());
    EXPECT_FALSE(Value(u"FALSE").ToBoolean());
    EXPECT_TRUE(Value(u"0.5").ToBoolean());
    EXPECT_FALSE(Value(u"0").ToBoolean());
    EXPECT_EQ(Raised([] { Value(u"yes").ToBoolean(); }), 13);
    EXPECT_EQ(Raised([] { Value::Null().ToBoolean(); }), 94);
}

TEST(Value, GivesDirectAccessToItsOwnKindOnly) {
    EXPECT_EQ(Value(u"x").Text(), "x");
    EXPECT_EQ(Value(QByteArray("x")).Bytes(), QByteArray("x"));
    EXPECT_EQ(Value(Exact("1.50")).AsDecimal().scale, 2);
    EXPECT_EQ(Value(DateTime{.day = 3}).AsDateTime().day, 3);
    EXPECT_EQ(Raised([] { Value(1).Text(); }), 13);
    EXPECT_EQ(Raised([] { Value(u"x").Bytes(); }), 13);
    EXPECT_EQ(Raised([] { Value(1).AsDecimal(); }), 13);
    EXPECT_EQ(Raised([] { Value().AsDateTime(); }), 13);
    EXPECT_EQ(Raised([] { Value(1).ToObject(); }), 13);
}

TEST(Value, CopiesShareTheObject) {
    const auto thing = std::make_shared<Thing>();
    const Value first{ObjectRef(thing)};
    const Value second = first;
    EXPECT_EQ(second.ToObject(), thing);
    EXPECT_EQ(thing.use_count(), 3);
}

}  // namespace quarv
