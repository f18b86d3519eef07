#include "base/LateBinding.h"

#include <QMetaMethod>
#include <QMetaProperty>
#include <array>
#include <limits>

#include "base/RuntimeError.h"

namespace quarv {

namespace {

constexpr size_t MaxArguments = 10;  // what QMetaMethod::invoke takes

template <typename T>
QVariant Narrow(const Value& value) {
    const qint64 number = value.ToInteger();
    if (number < qint64{std::numeric_limits<T>::min()} ||
        number > qint64{std::numeric_limits<T>::max()}) {
        throw RuntimeError(RuntimeError::Overflow);
    }
    return QVariant::fromValue(static_cast<T>(number));
}

// Enumerations travel as their numbers.
QVariant ToEnum(const Value& value, QMetaType type) {
    QVariant result = Narrow<int>(value);
    if (!result.convert(type)) throw RuntimeError(RuntimeError::TypeMismatch);
    return result;
}

void Check(const QObject* object) {
    if (object == nullptr) throw RuntimeError(RuntimeError::ObjectNotSet);
}

QMetaProperty FindProperty(const QObject* object, const QString& name) {
    Check(object);
    const QMetaObject* meta = object->metaObject();
    const int index = meta->indexOfProperty(name.toUtf8().constData());
    if (index < 0) throw RuntimeError(RuntimeError::NoSuchMember, name);
    return meta->property(index);
}

QMetaMethod FindMethod(const QObject* object, const QString& name, size_t arguments) {
    Check(object);
    const QByteArray wanted = name.toUtf8();
    const QMetaObject* meta = object->metaObject();
    bool known = false;
    // From the most derived class upward; within a class in the order of declaration.
    for (const QMetaObject* level = meta; level != nullptr; level = level->superClass()) {
        for (int i = level->methodOffset(); i < level->methodCount(); ++i) {
            const QMetaMethod method = level->method(i);
            const bool callable = method.access() == QMetaMethod::Public &&
                                  method.methodType() != QMetaMethod::Signal;
            if (!callable || method.name() != wanted) continue;
            if (static_cast<size_t>(method.parameterCount()) == arguments) return method;
            known = true;
        }
    }
    if (known) throw RuntimeError(RuntimeError::InvalidProcedureCall, name);
    throw RuntimeError(RuntimeError::NoSuchMember, name);
}

}  // namespace

Value FromVariant(const QVariant& variant) {
    if (!variant.isValid()) return {};
    if (variant.metaType() == QMetaType::fromType<Value>()) return variant.value<Value>();
    if (variant.metaType() == QMetaType::fromType<ObjectRef>()) return variant.value<ObjectRef>();
    switch (variant.typeId()) {
        case QMetaType::Bool:
            return variant.toBool();
        case QMetaType::Float:
            return variant.toFloat();
        case QMetaType::Double:
            return variant.toDouble();
        case QMetaType::QString:
            return variant.toString();
        case QMetaType::QByteArray:
            return variant.toByteArray();
        default:
            break;
    }
    if (variant.metaType().flags() & QMetaType::IsEnumeration) return variant.toInt();
    bool whole = false;
    const qlonglong number = variant.toLongLong(&whole);
    if (!whole) throw RuntimeError(RuntimeError::TypeMismatch);
    return number;
}

QVariant ToVariant(const Value& value, QMetaType type) {
    if (type == QMetaType::fromType<Value>()) return QVariant::fromValue(value);
    if (type == QMetaType::fromType<ObjectRef>()) return QVariant::fromValue(value.ToObject());
    switch (type.id()) {
        case QMetaType::Bool:
            return value.ToBoolean();
        case QMetaType::Short:
            return Narrow<short>(value);
        case QMetaType::UShort:
            return Narrow<ushort>(value);
        case QMetaType::Int:
            return Narrow<int>(value);
        case QMetaType::UInt:
            return Narrow<uint>(value);
        case QMetaType::LongLong:
            return QVariant::fromValue<qlonglong>(value.ToInteger());
        case QMetaType::Float:
            return QVariant::fromValue(static_cast<float>(value.ToDouble()));
        case QMetaType::Double:
            return value.ToDouble();
        case QMetaType::QString:
            return value.ToText();
        case QMetaType::QByteArray:
            return value.Bytes();
        default:
            break;
    }
    if (type.flags() & QMetaType::IsEnumeration) return ToEnum(value, type);
    throw RuntimeError(RuntimeError::TypeMismatch);
}

Value GetByName(const QObject* object, const QString& name) {
    const QMetaProperty property = FindProperty(object, name);
    if (!property.isReadable()) throw RuntimeError(RuntimeError::NoSuchMember, name);
    return FromVariant(property.read(object));
}

void SetByName(QObject* object, const QString& name, const Value& value) {
    const QMetaProperty property = FindProperty(object, name);
    if (!property.isWritable()) throw RuntimeError(RuntimeError::NoSuchMember, name);
    property.write(object, ToVariant(value, property.metaType()));
}

Value CallByName(QObject* object, const QString& method, const std::vector<Value>& arguments) {
    const QMetaMethod target = FindMethod(object, method, arguments.size());
    if (arguments.size() > MaxArguments) {
        throw RuntimeError(RuntimeError::InvalidProcedureCall, method);
    }
    std::array<QVariant, MaxArguments> converted;
    std::array<QGenericArgument, MaxArguments> passed;
    for (int i = 0; i < target.parameterCount(); ++i) {
        const QMetaType type = target.parameterMetaType(i);
        converted[i] = ToVariant(arguments[i], type);
        passed[i] = QGenericArgument(type.name(), converted[i].constData());
    }
    const QMetaType resultType = target.returnMetaType();
    const bool silent = resultType.id() == QMetaType::Void;
    QVariant result = silent ? QVariant() : QVariant(resultType);
    const QGenericReturnArgument returned =
        silent ? QGenericReturnArgument()
               : QGenericReturnArgument(resultType.name(), result.data());
    const bool called =
        target.invoke(object, Qt::DirectConnection, returned, passed[0], passed[1], passed[2],
                      passed[3], passed[4], passed[5], passed[6], passed[7], passed[8], passed[9]);
    if (!called) throw RuntimeError(RuntimeError::InvalidProcedureCall, method);
    return FromVariant(result);
}

}  // namespace quarv
