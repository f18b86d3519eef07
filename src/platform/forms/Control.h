// Control: what every control and form has: a name, a place in twips, visibility, a tag, a spoken
// name. A mixin beside the QWidget that it steers; the widget tree owns both. It knows no concrete
// control. Concrete classes repeat its properties for late binding by QUARV_CONTROL_PROPERTIES.
#pragma once

#include <QRect>
#include <QSize>
#include <QString>

#include "base/Object.h"
#include "platform/forms/ControlList.h"

class QWidget;

#define QUARV_CONTROL_PROPERTIES                           \
    Q_PROPERTY(QString Name READ Name)                     \
    Q_PROPERTY(QString TypeName READ TypeName)             \
    Q_PROPERTY(double Left READ Left WRITE SetLeft)        \
    Q_PROPERTY(double Top READ Top WRITE SetTop)           \
    Q_PROPERTY(double Width READ Width WRITE SetWidth)     \
    Q_PROPERTY(double Height READ Height WRITE SetHeight)  \
    Q_PROPERTY(bool Visible READ Visible WRITE SetVisible) \
    Q_PROPERTY(bool Enabled READ Enabled WRITE SetEnabled) \
    Q_PROPERTY(QString Tag READ Tag WRITE SetTag)          \
    Q_PROPERTY(QString ToolTipText READ ToolTipText WRITE SetToolTipText)

namespace quarv::forms {

class Form;

class Control : public Object {
  public:
    ~Control() override;
    Control(const Control&) = delete;
    Control& operator=(const Control&) = delete;

    QWidget* Widget() const { return widget_; }
    QString Name() const;
    // The class name without namespaces: "ButtonPlus", "TabStrip".
    QString TypeName() const;
    // The form around it; null where there is none (yet).
    Form* ParentForm() const;

    // Twips from the container's top left corner, read back exactly as written. A size below zero
    // or a length that is no number raises InvalidPropertyValue.
    double Left() const { return left_; }
    double Top() const { return top_; }
    double Width() const { return width_; }
    double Height() const { return height_; }
    void SetLeft(double twips) { Move(twips, top_, width_, height_); }
    void SetTop(double twips) { Move(left_, twips, width_, height_); }
    void SetWidth(double twips) { Move(left_, top_, twips, height_); }
    void SetHeight(double twips) { Move(left_, top_, width_, twips); }
    void Move(double left, double top, double width, double height);

    // The control's own flags: a visible control on a hidden frame still reads true.
    bool Visible() const { return visible_; }
    void SetVisible(bool visible);
    bool Enabled() const { return enabled_; }
    virtual void SetEnabled(bool enabled);

    QString Tag() const { return tag_; }
    void SetTag(const QString& tag) { tag_ = tag; }
    // Shown as plain text, whatever it holds.
    QString ToolTipText() const { return toolTip_; }
    void SetToolTipText(const QString& text);

    // What assistive tools say. Without a call it follows the caption, else the label that has
    // this control as buddy, else the name.
    QString SpokenName() const;
    void SetSpokenName(const QString& text);

    // A font by the system's name for it ("Microsoft Sans Serif", "Courier New"); `points` 0 keeps
    // the size.
    void SetFontName(const QString& name, double points = 0);

    // Above all its siblings.
    void ZOrder();
    void SetFocus();

  protected:
    // `self` is the concrete widget, whose parent is `container` (null for a form).
    Control(QWidget* self, QWidget* container, const QString& name);

    // Derived spoken names; an explicit SetSpokenName wins over both.
    void DeriveSpokenName(const QString& text);
    // The widget that the keyboard and assistive tools meet, where it is not the control itself.
    virtual QWidget* InnerWidget() const { return widget_; }
    // Called after Width or Height changed, by a caller or from outside.
    virtual void SizeChanged() {}
    virtual void ApplyGeometry(const QRect& pixels, bool moved, bool resized);
    virtual void ApplyVisible(bool visible);

    // A geometry that came from outside (window manager, a layout): twips follow where their
    // rounding differs from it.
    void AdoptSize(const QSize& pixels);
    void AdoptPosition(const QPoint& pixels);
    void NoteVisible(bool visible) { visible_ = visible; }
    // Applies the spoken name again, after InnerWidget changed.
    void RefreshSpokenName();

  private:
    friend class Label;
    void Register(QWidget* container);
    QRect PixelGeometry() const;

    QWidget* widget_;
    SharedControlList contained_;
    SharedControlList controls_;
    double left_ = 0;
    double top_ = 0;
    double width_ = 0;
    double height_ = 0;
    bool visible_ = true;
    bool enabled_ = true;
    QString tag_;
    QString toolTip_;
    QString spokenName_;
    QString derivedName_;
};

// The control that `widget` is; null where it is none.
Control* ControlOf(QWidget* widget);

}  // namespace quarv::forms
