#include "platform/forms/TextBox.h"

#include <QResizeEvent>
#include <QSignalBlocker>
#include <algorithm>
#include <memory>

#include "base/RuntimeError.h"
#include "platform/forms/Application.h"
#include "platform/forms/LineEditor.h"
#include "platform/forms/MemoEditor.h"

namespace quarv::forms {

TextBox::TextBox(QWidget* container, const QString& name)
    : QWidget(container), Control(this, container, name), Bordered(1) {
    line_ = MakeLine();
    Adopt(line_);
}

RaiseKeys TextBox::KeyEvents() {
    return {[this](int& key) { Q_EMIT KeyPress(key); },
            [this](int& key, int shift) { Q_EMIT KeyDown(key, shift); }};
}

LineEditor* TextBox::MakeLine() {
    auto* line = new LineEditor(this, KeyEvents());
    connect(line, &QLineEdit::textChanged, this, &TextBox::RaiseChange);
    return line;
}

MemoEditor* TextBox::MakeMemo() {
    auto* memo = new MemoEditor(this, KeyEvents());
    connect(memo, &QPlainTextEdit::textChanged, this, &TextBox::RaiseChange);
    memo->SetScanner(scanner_);
    return memo;
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
    if (on)
        memo_ = MakeMemo();
    else
        line_ = MakeLine();
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

void TextBox::SetAcceptsTab(bool on) {
    acceptsTab_ = on;
    ApplySettings();
}

void TextBox::SetLineScanner(std::shared_ptr<const LineScanner> scanner) {
    scanner_ = std::move(scanner);
    if (memo_) memo_->SetScanner(scanner_);
}

void TextBox::SetMaxLength(int units) {
    if (units < 0) throw RuntimeError(RuntimeError::InvalidPropertyValue);
    maxLength_ = units;
    ApplySettings();
    if (units > 0 && Text().size() > units) SetText(Text());
}

void TextBox::ApplySettings() {
    if (line_) {
        line_->setFrame(BorderStyle() != 0);
        line_->setEchoMode(passwordChar_.isEmpty() ? QLineEdit::Normal : QLineEdit::Password);
        line_->setReadOnly(locked_);
        const QSignalBlocker quiet(line_);
        line_->Limit(maxLength_);
        return;
    }
    memo_->setFrameShape(BorderStyle() != 0 ? QFrame::StyledPanel : QFrame::NoFrame);
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
    memo_->AcceptTabs(acceptsTab_);
}

void TextBox::SelectAll() {
    if (memo_)
        memo_->selectAll();
    else
        line_->selectAll();
}

int TextBox::SelStart() const {
    return memo_ ? memo_->SelectionStart(Text()) : line_->SelectionStart();
}

int TextBox::SelLength() const {
    return memo_ ? memo_->SelectionLength(Text()) : static_cast<int>(line_->selectedText().size());
}

void TextBox::SetSelStart(int units) {
    Select(units, 0);
}

void TextBox::SetSelLength(int units) {
    Select(SelStart(), units);
}

void TextBox::Select(int start, int length) {
    if (start < 0 || length < 0) throw RuntimeError(RuntimeError::InvalidPropertyValue);
    const QString text = Text();
    const int size = static_cast<int>(text.size());
    const int from = std::min(start, size);
    const int count = std::min(length, size - from);
    if (memo_)
        memo_->Select(text, from, count);
    else
        line_->Select(from, count);
}

void TextBox::resizeEvent(QResizeEvent*) {
    InnerWidget()->setGeometry(rect());
}

}  // namespace quarv::forms
