// RaisedPanel: a place for controls, drawn with a three-dimensional edge on any of its four sides.
// It centres the controls on it and enables them together; they belong to the form by name. Its
// container owns it. It takes no keyboard; to assistive tools it is a pane.
#pragma once

#include "base/Object.h"
#include "platform/drawing/DrawEdge.h"
#include "platform/forms/UserControl.h"

namespace quarv {

class RaisedPanel : public forms::UserControl {
    Q_OBJECT
    Q_PROPERTY(qint32 Edges READ Edges WRITE SetEdges)
    Q_PROPERTY(qint32 Style READ Style WRITE SetStyle)
    Q_PROPERTY(bool LeftEdge READ LeftEdge WRITE SetLeftEdge)
    Q_PROPERTY(bool TopEdge READ TopEdge WRITE SetTopEdge)
    Q_PROPERTY(bool rightedge READ rightedge WRITE Setrightedge)
    Q_PROPERTY(bool BottomEdge READ BottomEdge WRITE SetBottomEdge)
    Q_PROPERTY(quarv::ObjectRef ContainedControls READ ContainedList)

  public:
    RaisedPanel(QWidget* container, const QString& name);

    // Each writer announces the stored property that it changed, "Edges" or "Style", and repaints.

    // The sides that are drawn, as drawing::EdgeSides names them: all four at first. Other bits are
    // kept and mean nothing.
    qint32 Edges() const { return edges_; }
    void SetEdges(qint32 edges);
    // 0 raised, 1 sunken, 2 etched, 3 bump. Any other value is kept and draws no edge.
    qint32 Style() const { return style_; }
    void SetStyle(qint32 style);

    // One side of Edges each.
    bool LeftEdge() const { return HasEdge(drawing::BF_LEFT); }
    void SetLeftEdge(bool on) { SetEdge(drawing::BF_LEFT, on); }
    bool TopEdge() const { return HasEdge(drawing::BF_TOP); }
    void SetTopEdge(bool on) { SetEdge(drawing::BF_TOP, on); }
    // In lower case on purpose: hosts know it by this name.
    bool rightedge() const { return HasEdge(drawing::BF_RIGHT); }
    void Setrightedge(bool on) { SetEdge(drawing::BF_RIGHT, on); }
    bool BottomEdge() const { return HasEdge(drawing::BF_BOTTOM); }
    void SetBottomEdge(bool on) { SetEdge(drawing::BF_BOTTOM, on); }

    // In pixels. The width is a whole number, halves rounded to even, and raises Overflow beyond
    // 64 bits; the height is not rounded.
    double ScaleWidth() const override;
    double ScaleHeight() const override;

    // Paints at once.
    Q_INVOKABLE void Refresh();
    // Move each control on the panel to its middle, whatever else stands there; one larger than the
    // panel gets a place below 0. Places are not rounded.
    Q_INVOKABLE void CentreContainedVertically();
    Q_INVOKABLE void CentreContainedHorizontally();
    // Enabled of each control on the panel; the panel keeps its own.
    Q_INVOKABLE void SetContainedEnabled(bool b);

    // Raise Overflow for a stored number beyond 32 bits; nothing is changed then.
    void ReadProperties(const forms::PropertyBag& bag) override;
    void WriteProperties(forms::PropertyBag& bag) const override;

  Q_SIGNALS:
    // The left mouse button went down and came up on the panel itself, not on a control that stands
    // there, be it disabled. Not raised while the panel is being designed.
    void Click();

  protected:
    void UserControl_Resize() override { update(); }
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

  private:
    bool HasEdge(drawing::EdgeSides side) const;
    void SetEdge(drawing::EdgeSides side, bool on);
    // By name: a list of the controls that are on the panel now.
    ObjectRef ContainedList() const;
    // True where the left mouse button is on the panel and on no control of it.
    bool IsOwn(const QMouseEvent& event) const;
    void Announce(const QString& property);

    qint32 edges_ = drawing::BF_RECT;
    qint32 style_ = 0;
    bool pressed_ = false;
};

}  // namespace quarv
