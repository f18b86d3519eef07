// TextBox: a box for text, of one line or of many. It gives back what was put in, unchanged, until
// the user edits it; what the user typed has CR LF line ends. It hands its editing to one of two
// inner editors and decides nothing about the text.
#pragma once

#include <QPointer>
#include <QWidget>
#include <memory>

#include "platform/forms/Bordered.h"
#include "platform/forms/Control.h"

namespace quarv::forms {

class LineEditor;
class LineScanner;
class MemoEditor;
struct RaiseKeys;

class TextBox : public QWidget, public Control, public Bordered {
    Q_OBJECT
    QUARV_CONTROL_PROPERTIES
    Q_PROPERTY(QString Text READ Text WRITE SetText)
    Q_PROPERTY(QString PasswordChar READ PasswordChar WRITE SetPasswordChar)
    Q_PROPERTY(bool MultiLine READ MultiLine WRITE SetMultiLine)
    Q_PROPERTY(int ScrollBars READ ScrollBars WRITE SetScrollBars)
    Q_PROPERTY(bool Locked READ Locked WRITE SetLocked)
    Q_PROPERTY(bool AcceptsTab READ AcceptsTab WRITE SetAcceptsTab)
    Q_PROPERTY(int BorderStyle READ BorderStyle WRITE SetBorderStyle)
    Q_PROPERTY(int MaxLength READ MaxLength WRITE SetMaxLength)
    Q_PROPERTY(int SelStart READ SelStart WRITE SetSelStart)
    Q_PROPERTY(int SelLength READ SelLength WRITE SetSelLength)
    Q_PROPERTY(QString SelText READ SelText)

  public:
    enum Bars : int { NoBars = 0, Horizontal = 1, Vertical = 2, Both = 3 };

    // With the desktop's frame around it at first.
    TextBox(QWidget* container, const QString& name);

    QString Text() const;
    // Raises Change where the text becomes another. Cut to MaxLength.
    void SetText(const QString& text);

    // Not empty: what is typed into a box of one line is hidden.
    QString PasswordChar() const { return passwordChar_; }
    void SetPasswordChar(const QString& character);

    // Off at first. Keeps the text.
    bool MultiLine() const { return memo_ != nullptr; }
    void SetMultiLine(bool on);
    // One of Bars, for boxes of many lines; with a horizontal bar lines do not wrap. Any other
    // value raises InvalidPropertyValue.
    int ScrollBars() const { return bars_; }
    void SetScrollBars(int bars);

    // A locked box can be read, selected and copied by the user, not edited.
    bool Locked() const { return locked_; }
    void SetLocked(bool on);

    // Off at first. On, the Tab key puts a tab into a box of many lines that is not locked; there
    // Shift+Tab and Ctrl+Tab move to the control before and the next.
    bool AcceptsTab() const { return acceptsTab_; }
    void SetAcceptsTab(bool on);

    // Colours a box of many lines, shared; null, as at first, for none. The colours are no part of
    // the text.
    void SetLineScanner(std::shared_ptr<const LineScanner> scanner);

    // UTF-16 units; 0 means no limit. Below 0 raises InvalidPropertyValue.
    int MaxLength() const { return maxLength_; }
    void SetMaxLength(int units);

    Q_INVOKABLE void SelectAll();
    // The selection in UTF-16 units of Text, from 0; without one SelStart is where the caret is.
    // Writing SelStart places the caret and selects nothing. Beyond the text is its end; below 0
    // raises InvalidPropertyValue.
    int SelStart() const;
    void SetSelStart(int units);
    int SelLength() const;
    void SetSelLength(int units);
    QString SelText() const { return Text().mid(SelStart(), SelLength()); }

  Q_SIGNALS:
    void Change();
    // A handler may change the character, or set it to 0 to swallow the key.
    void KeyPress(int& keyAscii);
    // Before the box handles a key, Tab and Backtab included. `keyCode` is a Qt::Key; a handler may
    // set it to 0 to swallow the key. `shift` adds up Shift (1), Ctrl (2) and Alt (4).
    void KeyDown(int& keyCode, int shift);

  protected:
    void BorderChanged() override { ApplySettings(); }
    QWidget* InnerWidget() const override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    RaiseKeys KeyEvents();
    LineEditor* MakeLine();
    MemoEditor* MakeMemo();
    void Select(int start, int length);
    void Adopt(QWidget* editor);
    void ApplySettings();
    void RaiseChange();

    LineEditor* line_ = nullptr;
    MemoEditor* memo_ = nullptr;
    QString given_;
    QString passwordChar_;
    int bars_ = NoBars;
    int maxLength_ = 0;
    bool locked_ = false;
    bool acceptsTab_ = false;
    std::shared_ptr<const LineScanner> scanner_;
};

}  // namespace quarv::forms
