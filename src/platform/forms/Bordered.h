// Bordered: the border of a control that may do without one. A mixin beside Control; the concrete
// control paints what BorderStyle says.
#pragma once

namespace quarv::forms {

class Bordered {
  public:
    virtual ~Bordered() = default;

    // 0 is no border, 1 the control's own. Any other value raises InvalidPropertyValue.
    int BorderStyle() const { return border_; }
    void SetBorderStyle(int border);

  protected:
    explicit Bordered(int border) : border_(border) {}
    // To be painted anew.
    virtual void BorderChanged() = 0;

  private:
    int border_;
};

}  // namespace quarv::forms
