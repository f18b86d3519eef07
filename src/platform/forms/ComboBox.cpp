#include "platform/forms/ComboBox.h"

#include <QLineEdit>
#include <QSignalBlocker>
#include <QWheelEvent>
#include <limits>

#include "base/RuntimeError.h"
#include "platform/forms/Application.h"
#include "platform/forms/KeyPress.h"
#include "platform/forms/RowDelegate.h"

namespace quarv::forms {

namespace {

constexpr int RowAir = 6;

// A character by itself, no command.
bool TypesText(const QKeyEvent& event) {
    const QString text = event.text();
    return !IsCommand(event) && !text.isEmpty() &&
           (text.at(0).isPrint() || text.at(0).isSurrogate());
}

}  // namespace

ComboBox::ComboBox(QWidget* container, const QString& name)
    : QComboBox(container), Control(this, container, name) {
    setEditable(true);
    setInsertPolicy(QComboBox::NoInsert);
    setCompleter(nullptr);
    setItemDelegate(new RowDelegate(this, RowAir));
    // Otherwise a long list would be measured entry by entry before the first showing.
    setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    lineEdit()->setMaxLength(std::numeric_limits<int>::max());
    RefreshSpokenName();
    connect(lineEdit(), &QLineEdit::textEdited, this, &ComboBox::Edited);
    connect(this, &QComboBox::activated, this, &ComboBox::Chosen);
}

QString ComboBox::Text() const {
    return lineEdit()->text();
}

void ComboBox::SetText(const QString& text) {
    const bool changed = text != Text();
    {
        const QSignalBlocker quiet(this);
        setCurrentIndex(-1);
        lineEdit()->setText(text);
        lineEdit()->setCursorPosition(0);
    }
    chosen_ = -1;
    if (changed) Application::RunEvent([this] { Q_EMIT Change(); });
}

void ComboBox::SetLocked(bool on) {
    locked_ = on;
    lineEdit()->setReadOnly(on);
}

void ComboBox::SetListIndex(int position) {
    if (position < -1 || position >= ListCount())
        throw RuntimeError(RuntimeError::InvalidPropertyValue);
    {
        const QSignalBlocker quiet(this);
        setCurrentIndex(position);
        lineEdit()->setText(position < 0 ? QString() : itemText(position));
    }
    if (position < 0)
        chosen_ = -1;
    else
        Chosen(position);
}

QString ComboBox::List(int position) const {
    if (position < 0 || position >= ListCount())
        throw RuntimeError(RuntimeError::SubscriptOutOfRange);
    return itemText(position);
}

void ComboBox::AddItem(const QString& text) {
    AddItem(text, ListCount());
}

void ComboBox::AddItem(const QString& text, int position) {
    if (position < 0 || position > ListCount())
        throw RuntimeError(RuntimeError::SubscriptOutOfRange);
    const QSignalBlocker quiet(this);
    if (ListCount() > 0) {
        insertItem(position, text);
        if (position <= chosen_) ++chosen_;
        return;
    }
    // Qt takes the first entry of an empty list into the box; here the text is the user's.
    const QString kept = Text();
    const int cursor = lineEdit()->cursorPosition();
    insertItem(0, text);
    setCurrentIndex(-1);
    lineEdit()->setText(kept);
    lineEdit()->setCursorPosition(cursor);
}

void ComboBox::Clear() {
    const bool changed = !Text().isEmpty();
    {
        const QSignalBlocker quiet(this);
        clear();
        lineEdit()->clear();
    }
    chosen_ = -1;
    if (changed) Application::RunEvent([this] { Q_EMIT Change(); });
}

void ComboBox::Chosen(int position) {
    chosen_ = position;
    Application::RunEvent([this] { Q_EMIT Click(); });
}

void ComboBox::Edited() {
    chosen_ = -1;
    Application::RunEvent([this] { Q_EMIT Change(); });
}

void ComboBox::ChooseNextBeginningWith(const QString& typed) {
    for (int step = 1; step <= ListCount(); ++step) {
        const int position = (currentIndex() + step) % ListCount();
        if (!itemText(position).startsWith(typed, Qt::CaseInsensitive)) continue;
        if (position == chosen_) return;
        setCurrentIndex(position);
        Chosen(position);
        return;
    }
}

bool ComboBox::event(QEvent* event) {
    const auto raise = [this](int& key, int shift) { Q_EMIT KeyDown(key, shift); };
    return TakenByKeyDown(*event, raise) || QComboBox::event(event);
}

void ComboBox::keyPressEvent(QKeyEvent* event) {
    const auto handled = AfterKeyPress(*event, [this](int& key) { Q_EMIT KeyPress(key); });
    if (!handled) return;
    if (locked_ && TypesText(*handled)) {
        ChooseNextBeginningWith(handled->text());
        return;
    }
    QComboBox::keyPressEvent(handled.get());
    event->setAccepted(handled->isAccepted());
}

void ComboBox::wheelEvent(QWheelEvent* event) {
    // Turning the wheel over a box that is not in use must not change what it holds.
    if (hasFocus())
        QComboBox::wheelEvent(event);
    else
        event->ignore();
}

}  // namespace quarv::forms
