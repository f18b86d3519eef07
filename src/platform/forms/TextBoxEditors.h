// LineEditor and MemoEditor: the two editors inside a TextBox, which owns them. They raise KeyPress
// through their box and keep text whole; they know nothing else of the box.
#pragma once

#include <QLineEdit>
#include <QPlainTextEdit>
#include <functional>

namespace quarv::forms {

using RaiseKeyPress = std::function<void(int&)>;

class LineEditor : public QLineEdit {
    Q_OBJECT

  public:
    LineEditor(QWidget* box, RaiseKeyPress raise);
    // UTF-16 units; 0 means no limit.
    void Limit(int units);

  protected:
    void keyPressEvent(QKeyEvent* event) override;

  private:
    RaiseKeyPress raise_;
};

class MemoEditor : public QPlainTextEdit {
    Q_OBJECT

  public:
    MemoEditor(QWidget* box, RaiseKeyPress raise);
    // UTF-16 units, a line end counting as two; 0 means no limit.
    void Limit(int units) { limit_ = units; }
    // The document with CR LF line ends, every other character as it stands.
    QString ReadDocument() const;

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
    void insertFromMimeData(const QMimeData* source) override;

  private:
    // How many more units may be put in place of the selection; -1 for any number.
    int Room() const;

    RaiseKeyPress raise_;
    int limit_ = 0;
};

}  // namespace quarv::forms
