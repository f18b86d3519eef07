// Late binding: properties and methods of an object by name, at run time, through Qt's meta-object
// system (Q_PROPERTY, Q_INVOKABLE and public slots). Names match exactly. It knows no control.
// Each function raises ObjectNotSet for no object and NoSuchMember for a name it does not have.
#pragma once

#include <QObject>
#include <QString>
#include <QVariant>
#include <vector>

#include "base/Value.h"

namespace quarv {

// Raises TypeMismatch where the property's type has no Value.
Value GetByName(const QObject* object, const QString& name);

// Converts to the property's own type: raises Overflow where an integer does not fit it,
// TypeMismatch where there is no conversion, NoSuchMember for a property that cannot be written.
void SetByName(QObject* object, const QString& name, const Value& value);

// Calls the method that takes as many arguments (trailing defaults may be left out), at most ten;
// of several such the one declared first. Empty is the result of a method without one. Arguments
// convert as in SetByName; what the method raises passes through.
Value CallByName(QObject* object, const QString& method, const std::vector<Value>& arguments = {});

// Between a Value and Qt's own value of a given type. Both raise TypeMismatch where there is no
// conversion, ToVariant also Overflow.
Value FromVariant(const QVariant& variant);
QVariant ToVariant(const Value& value, QMetaType type);

}  // namespace quarv
