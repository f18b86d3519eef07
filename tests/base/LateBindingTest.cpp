#include "base/LateBinding.h"

#include <limits>

#include "base/RuntimeError.h"
#include "support/Raised.h"

namespace quarv {

class Gadget : public QObject {
    Q_OBJECT
    Q_PROPERTY(double Left MEMBER left_)
    Q_PROPERTY(QString Caption MEMBER caption_)
    Q_PROPERTY(bool Enabled MEMBER enabled_)
    Q_PROPERTY(short Small MEMBER small_)
    Q_PROPERTY(int Index READ Index WRITE SetIndex)
    Q_PROPERTY(int Fixed READ Index)
    Q_PROPERTY(Shape Outline MEMBER outline_)
    Q_PROPERTY(quarv::Value Any READ Any WRITE SetAny)
    Q_PROPERTY(quarv::ObjectRef Owner MEMBER owner_)
    Q_PROPERTY(QObject* Plain MEMBER plain_)

  public:
    enum Shape { Round = 1, Square = 2 };
    Q_ENUM(Shape)

    int Index() const { return index_; }
    void SetIndex(int index) {
        if (index < -1) throw RuntimeError(RuntimeError::InvalidPropertyValue);
        index_ = index;
    }

    Value Any() const { return any_; }
    void SetAny(const Value& value) { any_ = value; }

    Q_INVOKABLE void AddItem(const QString& text) { caption_ += text + u'|'; }
    Q_INVOKABLE QString List(int index) const { return QStringLiteral("item %1").arg(index); }
    Q_INVOKABLE int Sum(int a, int b, int c = 100) { return a + b + c; }
    Q_INVOKABLE quarv::Value Echo(const quarv::Value& value) { return value; }
    Q_INVOKABLE void Fail() { throw RuntimeError(RuntimeError::DivisionByZero); }
    void Hidden() {}

  Q_SIGNALS:
    void Changed();

  private:
    Q_INVOKABLE void Secret() {}

    double left_ = 0;
    QString caption_;
    bool enabled_ = false;
    short small_ = 0;
    int index_ = -1;
    Shape outline_ = Round;
    Value any_;
    ObjectRef owner_;
    QObject* plain_ = nullptr;
};

TEST(LateBinding, WritesAndReadsProperties) {
    Gadget gadget;
    SetByName(&gadget, "Left", 12.25);
    EXPECT_EQ(GetByName(&gadget, "Left").ToDouble(), 12.25);
    SetByName(&gadget, "Caption", Value(u"Records:"));
    EXPECT_EQ(GetByName(&gadget, "Caption").Text(), "Records:");
    SetByName(&gadget, "Enabled", true);
    EXPECT_EQ(GetByName(&gadget, "Enabled").kind(), Value::Kind::Boolean);
    EXPECT_TRUE(GetByName(&gadget, "Enabled").ToBoolean());
    SetByName(&gadget, "Index", 7);
    EXPECT_EQ(GetByName(&gadget, "Index").ToInteger(), 7);
    SetByName(&gadget, "Outline", 2);
    EXPECT_EQ(GetByName(&gadget, "Outline").ToInteger(), 2);
}

TEST(LateBinding, ConvertsToThePropertysType) {
    Gadget gadget;
    SetByName(&gadget, "Index", Value(u"41.6"));
    EXPECT_EQ(gadget.Index(), 42);
    SetByName(&gadget, "Caption", 5);
    EXPECT_EQ(GetByName(&gadget, "Caption").Text(), "5");
    SetByName(&gadget, "Enabled", Value(u"true"));
    EXPECT_TRUE(GetByName(&gadget, "Enabled").ToBoolean());
}

TEST(LateBinding, CarriesValuesAndObjectsUnchanged) {
    struct Thing : Object {};
    const ObjectRef thing = std::make_shared<Thing>();
    Gadget gadget;
    SetByName(&gadget, "Any", Value::Null());
    EXPECT_TRUE(GetByName(&gadget, "Any").IsNull());
    SetByName(&gadget, "Owner", thing);
    EXPECT_EQ(GetByName(&gadget, "Owner").ToObject(), thing);
}

TEST(LateBinding, RaisesWhatDoesNotConvert) {
    Gadget gadget;
    EXPECT_EQ(Raised([&] { SetByName(&gadget, "Index", Value(u"abc")); }), 13);
    EXPECT_EQ(Raised([&] { SetByName(&gadget, "Index", 2147483648); }), 6);
    EXPECT_EQ(Raised([&] { SetByName(&gadget, "Small", 32768); }), 6);
    EXPECT_EQ(Raised([&] { SetByName(&gadget, "Caption", Value::Null()); }), 94);
    EXPECT_EQ(Raised([&] { SetByName(&gadget, "Plain", 5); }), 13);
    EXPECT_EQ(Raised([&] { GetByName(&gadget, "Plain"); }), 13);
    EXPECT_EQ(gadget.Index(), -1);
}

TEST(LateBinding, UnknownNamesRaiseAndAddNothing) {
    Gadget gadget;
    for (const char* name : {"Colour", "left", ""}) {
        EXPECT_EQ(Raised([&] { SetByName(&gadget, name, 1); }), 438) << name;
        EXPECT_EQ(Raised([&] { GetByName(&gadget, name); }), 438) << name;
        EXPECT_EQ(Raised([&] { CallByName(&gadget, name); }), 438) << name;
    }
    EXPECT_TRUE(gadget.dynamicPropertyNames().isEmpty());
    EXPECT_EQ(Raised([&] { SetByName(&gadget, "Fixed", 1); }), 438);
}

TEST(LateBinding, CallsMethodsWithTheirResults) {
    Gadget gadget;
    EXPECT_TRUE(CallByName(&gadget, "AddItem", {Value(u"a")}).IsEmpty());
    CallByName(&gadget, "AddItem", {5});
    EXPECT_EQ(GetByName(&gadget, "Caption").Text(), "a|5|");
    EXPECT_EQ(CallByName(&gadget, "List", {3}).Text(), "item 3");
    EXPECT_EQ(CallByName(&gadget, "Sum", {1, 2, 3}).ToInteger(), 6);
    EXPECT_EQ(CallByName(&gadget, "Sum", {1, 2}).ToInteger(), 103);
    EXPECT_TRUE(CallByName(&gadget, "Echo", {Value::Null()}).IsNull());
}

TEST(LateBinding, CallsOnlyWhatIsOffered) {
    Gadget gadget;
    for (const char* name : {"Hidden", "Secret", "Changed"}) {
        EXPECT_EQ(Raised([&] { CallByName(&gadget, name); }), 438) << name;
    }
}

TEST(LateBinding, WrongNumberOfArgumentsRaises) {
    Gadget gadget;
    EXPECT_EQ(Raised([&] { CallByName(&gadget, "AddItem"); }), 5);
    EXPECT_EQ(Raised([&] { CallByName(&gadget, "Sum", std::vector<Value>(11, Value(1))); }), 5);
}

TEST(LateBinding, WhatTheObjectRaisesPassesThrough) {
    Gadget gadget;
    EXPECT_EQ(Raised([&] { CallByName(&gadget, "Fail"); }), 11);
    EXPECT_EQ(Raised([&] { SetByName(&gadget, "Index", -2); }), 380);
}

TEST(LateBinding, NoObjectRaises) {
    EXPECT_EQ(Raised([] { GetByName(nullptr, "Left"); }), 91);
    EXPECT_EQ(Raised([] { SetByName(nullptr, "Left", 1); }), 91);
    EXPECT_EQ(Raised([] { CallByName(nullptr, "AddItem", {1}); }), 91);
}

}  // namespace quarv

#include "LateBindingTest.moc"
