// Form: a top-level window. It lists its controls, raises Form_Load once before it is first shown,
// and gives Enter and Escape to its default and cancel buttons. Its lengths are those of the area
// inside the window's frame. It knows nothing of what its controls do.
#pragma once

#include <QWidget>

#include "platform/forms/Control.h"
#include "platform/forms/ControlHost.h"

namespace quarv::forms {

class Form : public QWidget, public Control, public ControlHost {
    Q_OBJECT
    QUARV_CONTROL_PROPERTIES
    Q_PROPERTY(QString Caption READ Caption WRITE SetCaption)
    Q_PROPERTY(int BorderStyle READ BorderStyle WRITE SetBorderStyle)
    Q_PROPERTY(double ScaleWidth READ ScaleWidth)
    Q_PROPERTY(qlonglong hwnd READ hwnd)
    Q_PROPERTY(double ScaleHeight READ ScaleHeight)
    Q_PROPERTY(bool KeyPreview READ KeyPreview WRITE SetKeyPreview)

  public:
    enum Border : int { NoBorder = 0, FixedSingle = 1, Sizable = 2, FixedDialog = 3 };

    // A form is sizable and 4800 by 3600 twips until told otherwise. `owner` (may be null) keeps
    // it above its own window and deletes it.
    explicit Form(const QString& name, QWidget* owner = nullptr);
    ~Form() override;

    QString Caption() const { return windowTitle(); }
    void SetCaption(const QString& caption);

    // One of Border; any other value raises InvalidPropertyValue.
    int BorderStyle() const { return border_; }
    void SetBorderStyle(int border);

    // The window's handle on the desktop; asking makes the window where it was not made yet.
    qlonglong hwnd() const { return static_cast<qlonglong>(winId()); }

    // The inner size in twips.
    double ScaleWidth() const { return Width(); }
    double ScaleHeight() const { return Height(); }

    // On, the form raises KeyUp before the control with the keyboard sees the key. Off at first.
    bool KeyPreview() const { return keyPreview_; }
    void SetKeyPreview(bool on) { keyPreview_ = on; }

    // Raises Form_Load where that has not happened yet.
    void Load();
    // Loads, shows without making modal, and brings to the front.
    Q_INVOKABLE void Show();
    // Hides the window and raises Closed. The object stays; Show shows it again.
    Q_INVOKABLE void Close();

    // False while a form is being designed rather than run. Controls on it inherit the mark.
    bool UserMode() const { return userMode_; }
    void SetUserMode(bool running) { userMode_ = running; }

    void setVisible(bool visible) override;

  Q_SIGNALS:
    void Resize();
    void Closed();
    // A key was let go while the form previews keys: its Qt::Key, and which of Shift (1), Ctrl (2)
    // and Alt (4) are held, added up. A handler may set the code to 0: the control does not see the
    // key then. A key that is held down and repeats raises it once.
    void KeyUp(int& keyCode, int shift);

  protected:
    virtual void Form_Load() {}
    // Raised after every change of the size and once at the first showing.
    virtual void Form_Resize() {}

    void SizeChanged() override;
    void ApplyGeometry(const QRect& pixels, bool moved, bool resized) override;
    void ApplyVisible(bool visible) override;
    void resizeEvent(QResizeEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    friend class Application;
    // Raises KeyUp; true where the handler took the key.
    bool TakesKeyUp(const QKeyEvent& event);
    void ApplySize(const QSize& pixels);

    int border_ = Sizable;
    bool loaded_ = false;
    bool shownOnce_ = false;
    bool userMode_ = true;
    bool keyPreview_ = false;
};

}  // namespace quarv::forms
