// RUtils: the module of helpers that need nothing but values: texts, values of any type and file
// names. What deals with controls and windows is in UTIL. Case-insensitive means Unicode's simple
// case folding, character by character.
#pragma once

#include <QString>
#include <QStringView>

#include "base/Value.h"

namespace quarv {

// Case-insensitive. An empty prefix gives true.
bool TextStartsWith(QStringView s, QStringView prefix);
// Case-insensitive equality.
bool SameText(QStringView a, QStringView b);
// Appends ", " and the item to a list that is not empty; an empty list becomes the item.
void AddToCommaList(QString& list, const QString& item);
// Every "|" becomes CR LF.
QString BarsToLineBreaks(const QString& text);
// The text without the blanks (code 32 alone) at its two ends.
QString TrimBlanks(QStringView text);
// The text before the first character of code 0, all of it where there is none.
QString TrimAtNull(const QString& text);

// By the ordinary comparison of values. Where the two have no order, MaxOf and MinOf give `b` and
// Clamp changes nothing.
Value MaxOf(const Value& a, const Value& b);
Value MinOf(const Value& a, const Value& b);
// Brings `x` up to `lo`, then down to `hi`: where lo > hi, `hi` wins.
void Clamp(Value& x, const Value& lo, const Value& hi);
// True for an object reference other than no object.
bool IsAssigned(const Value& value);

struct PathParts {
    QString folder;  // with its separator; empty where the path has none
    QString name;
};

// Parts the path behind its last "\", or where it has none behind its last ":".
PathParts SplitPath(const QString& path);
// The `name` part of SplitPath.
QString FileNameOf(const QString& path);
// True for a regular file, or a link to one; false for everything else and on any error.
bool FileExists(const QString& path);

}  // namespace quarv
