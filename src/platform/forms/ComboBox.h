// ComboBox: an editable drop-down list. Its text and its list are independent: nothing completes
// or corrects what is typed, and nothing enters the list by itself.
#pragma once

#include <QComboBox>

#include "platform/forms/Control.h"

namespace quarv::forms {

class ComboBox : public QComboBox, public Control {
    Q_OBJECT
    QUARV_CONTROL_PROPERTIES
    Q_PROPERTY(QString Text READ Text WRITE SetText)
    Q_PROPERTY(int ListCount READ ListCount)
    Q_PROPERTY(int ListIndex READ ListIndex WRITE SetListIndex)
    Q_PROPERTY(bool Locked READ Locked WRITE SetLocked)

  public:
    ComboBox(QWidget* container, const QString& name);

    // Any characters and any length, given back as they are.
    QString Text() const;
    // Raises Change where the text becomes another; ListIndex becomes -1.
    void SetText(const QString& text);

    // In a locked box the user can choose an entry, from the list, by Up and Down or by typing its
    // first letter, but enter no text. Off at first.
    bool Locked() const { return locked_; }
    void SetLocked(bool on);

    int ListCount() const { return count(); }
    // The 0-based position of the entry chosen last; -1 once other text was typed or set.
    int ListIndex() const { return chosen_; }
    // Takes the entry's text and raises Click; -1 chooses nothing and empties the text. Any other
    // position outside the list raises InvalidPropertyValue.
    void SetListIndex(int position);
    // 0-based; raises SubscriptOutOfRange outside the list.
    Q_INVOKABLE QString List(int position) const;
    // Appends; the text stays.
    Q_INVOKABLE void AddItem(const QString& text);
    // Before the entry at `position` (0..ListCount, else SubscriptOutOfRange); the text stays.
    Q_INVOKABLE void AddItem(const QString& text, int position);
    // Empties the list, and the text with it.
    Q_INVOKABLE void Clear();

  Q_SIGNALS:
    // An entry was chosen.
    void Click();
    // The text became another by typing or by SetText.
    void Change();
    // A handler may change the character, or set it to 0 to swallow the key.
    void KeyPress(int& keyAscii);
    // Before the box handles a key, Tab and Backtab included; an open list takes its keys itself.
    // `keyCode` is a Qt::Key; a handler may set it to 0 to swallow the key. `shift` adds up Shift
    // (1), Ctrl (2) and Alt (4).
    void KeyDown(int& keyCode, int shift);

  protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

  private:
    void Chosen(int position);
    void ChooseNextBeginningWith(const QString& typed);
    void Edited();

    int chosen_ = -1;
    bool locked_ = false;
};

}  // namespace quarv::forms
