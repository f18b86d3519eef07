// A list control as the lists and helpers reach one: by the names of its members alone.
#pragma once

#include <QObject>
#include <QStringList>

namespace quarv {

class ListControl : public QObject {
    Q_OBJECT
    Q_PROPERTY(int ListCount READ ListCount)
    Q_PROPERTY(int ListIndex MEMBER listIndex)

  public:
    int ListCount() const { return static_cast<int>(entries.size()); }
    Q_INVOKABLE void AddItem(const QString& text) { entries.append(text); }
    Q_INVOKABLE QString List(int index) const { return entries.at(index); }

    QStringList entries;
    int listIndex = 99;
};

}  // namespace quarv
