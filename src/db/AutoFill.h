// AutoFill: keeps the texts most recently used in a drop-down box, newest first, as the box's list
// and in a section of the registry. Owned by the window with the box; borrows box and registry. It
// knows the box by names only: a property Text, and the methods Clear and AddItem.
#pragma once

#include <QPointer>

#include "base/StringList.h"
#include "db/Registry.h"

namespace quarv {

class AutoFill {
  public:
    static constexpr qint16 DefaultMaximum = 10;

    // `registry` outlives this.
    explicit AutoFill(Registry& registry) : registry_(registry) {}

    // Fills the box from the values "<key>-1", "<key>-2", ... of the section. At most `numMaxMRUs`
    // entries are kept, none where it is not above 0. Before this, and once the box is gone, the
    // members that use the box or save raise ObjectNotSet; a box without what is named above raises
    // NoSuchMember.
    void Init(QObject& ctl, const QString& section, const QString& key,
              qint16 numMaxMRUs = DefaultMaximum);
    // The box's text becomes the stored default, empty where there is none.
    void ShowAnyDefault();
    // Puts the text in front, in its new spelling; with `saveIt` the list is saved, before it is
    // cut to the maximum. The empty text, and one that stands in front in any letter case, do
    // nothing of both.
    void Add(const QString& str, bool saveIt = false);
    // The user is done with the box: its text is added and saved, and stored as the default too
    // where that is wanted.
    void EditsComplete(bool saveAsDefault = false);
    // Makes the stored list this one, in one write to the registry: whole or, where that fails, not
    // at all; no write where it is this one already. Entries of more than 100,000 UTF-16 units are
    // left out. The last program to save wins.
    void SaveMRU();
    // 1-based, 1 the newest. Raises SubscriptOutOfRange outside the storage of the list; it is not
    // compared with the count.
    QString Item(qint16 index) const { return items_.Items(index); }

  private:
    QString ValueName(int position) const;
    void Load();
    void Refresh();
    QObject& Box() const;

    Registry& registry_;
    QPointer<QObject> control_;
    QString section_;
    QString key_;
    qint16 maximum_ = DefaultMaximum;
    StringList items_;
};

}  // namespace quarv
