#include "platform/forms/TextBox.h"

#include <QResizeEvent>
#include <QSignalBlocker>
#include <memory>

#include "base/RuntimeError.h"
#include "platform/forms/Application.h"
#include "platform/forms/LineEditor.h"
#include "platform/forms/MemoEditor.h"

namespace quarv::forms {

TextBox::TextBox(QWidget* container, const QString& name)
    : QWidget(container), Control(this, container, name) {
    line_ = new LineEditor(this, [this](int& key) { Q_EMIT KeyPress(key); });
    connect(line_, &QLineEdit::textChanged, this, &TextBox::RaiseChange);
    Adopt(line_);
}

QWidget* TextBox::InnerWidget() const {
    return memo_ ? static_cast<QWidget*>(memo_) : static_cast<QWidget*>(line_);
}

void TextBox::Adopt(QWidget* editor) {
    editor->setGeometry(rect());
    setFocusProxy(editor);
    RefreshSpokenName();
    editor->show();
}

QString TextBox::Text() const {
    if (memo_) return memo_->document()->isModified() ? memo_->ReadDocument() : given_;
    return line_->isModified() ? line_->text() : given_;
}

void TextBox::SetText(const QString& text) {
    const QString before = Text();
    given_ = maxLength_ > 0 ? text.left(maxLength_) : text;
    {
        const QSignalBlocker quiet(InnerWidget());
        if (memo_) {
            memo_->setPlainText(given_);
            memo_->document()->setModified(false);
        } else {
            line_->setText(given_);
            line_->setCursorPosition(0);
        }
    }
    if (given_ != before) RaiseChange();
}

void TextBox::RaiseChange() {
    Application::RunEvent([this] { Q_EMIT Change(); });
}

void TextBox::SetPasswordChar(const QString& character) {
    passwordChar_ = character;
    ApplySettings();
}

void TextBox::SetMultiLine(bool on) {
    if (on == MultiLine()) return;
    const QString text = Text();
    const std::unique_ptr<QWidget> before(InnerWidget());
    line_ = nullptr;
    memo_ = nullptr;
    const auto raise = [this](int& key) { Q_EMIT KeyPress(key); };
    if (on) {
        memo_ = new MemoEditor(this, raise);
        connect(memo_, &QPlainTextEdit::textChanged, this, &TextBox::RaiseChange);
    } else {
        line_ = new LineEditor(this, raise);
        connect(line_, &QLineEdit::textChanged, this, &TextBox::RaiseChange);
    }
    ApplySettings();
    setTabOrder(before.get(), InnerWidget());
    Adopt(InnerWidget());
    given_ = text;
    SetText(text);
}

void TextBox::SetScrollBars(int bars) {
    if (bars < NoBars || bars > Both) throw RuntimeError(RuntimeError::InvalidPropertyValue);
    bars_ = bars;
    ApplySettings();
}

void TextBox::SetLocked(bool on) {
    locked_ = on;
    ApplySettings();
}

void TextBox::SetMaxLength(int units) {
    if (units < 0) throw RuntimeError(RuntimeError::InvalidPropertyValue);
    maxLength_ = units;
    ApplySettings();
    if (units > 0 && Text().size() > units) SetText(Text());
}

void TextBox::ApplySettings() {
    if (line_) {
        line_->setEchoMode(passwordChar_.isEmpty() ? QLineEdit::Normal : QLineEdit::Password);
        line_->setReadOnly(locked_);
        const QSignalBlocker quiet(line_);
        line_->Limit(maxLength_);
        return;
    }
    const auto policy = [this](int bar) {
        return (bars_ & bar) != 0 ? Qt::ScrollBarAsNeeded : Qt::ScrollBarAlwaysOff;
    };
    memo_->setHorizontalScrollBarPolicy(policy(Horizontal));
    memo_->setVerticalScrollBarPolicy(policy(Vertical));
    memo_->setLineWrapMode((bars_ & Horizontal) != 0 ? QPlainTextEdit::NoWrap
                                                     : QPlainTextEdit::WidgetWidth);
    memo_->setReadOnly(locked_);
    if (locked_)
        memo_->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    memo_->Limit(maxLength_);
}

void TextBox::SelectAll() {
    if (memo_)
        memo_->selectAll();
    else
        line_->selectAll();
}

void TextBox::resizeEvent(QResizeEvent*) {
    InnerWidget()->setGeometry(rect());
}

}  // namespace quarv::forms
