// TabStrip: a row of tabs above an empty page. What stands on the page are frames of the form that
// is around the strip; whoever handles Click shows and hides them.
#pragma once

#include <QWidget>
#include <memory>
#include <vector>

#include "platform/forms/Control.h"

class QTabBar;

namespace quarv::forms {

class TabStrip;

// One tab; its strip owns it.
class Tab : public QObject, public Object {
    Q_OBJECT
    Q_PROPERTY(QString Caption READ Caption)
    Q_PROPERTY(int Index READ Index)

  public:
    const QString& Caption() const { return caption_; }
    // 1-based.
    int Index() const { return index_; }

  private:
    friend class Tabs;
    Tab(QString caption, int index) : caption_(std::move(caption)), index_(index) {}

    QString caption_;
    int index_;
};

// The tabs of a strip, 1-based.
class Tabs {
  public:
    // Appends. The first tab is selected at once, without a Click.
    Tab& Add(const QString& caption);
    int Count() const { return static_cast<int>(tabs_.size()); }
    // Raises SubscriptOutOfRange outside the strip.
    Tab& Item(int index) const;
    void Clear();

  private:
    friend class TabStrip;
    explicit Tabs(QTabBar& bar) : bar_(bar) {}

    QTabBar& bar_;
    std::vector<std::unique_ptr<Tab>> tabs_;
};

class TabStrip : public QWidget, public Control {
    Q_OBJECT
    QUARV_CONTROL_PROPERTIES
    Q_PROPERTY(quarv::ObjectRef SelectedItem READ SelectedObject)
    Q_PROPERTY(double ClientLeft READ ClientLeft)
    Q_PROPERTY(double ClientTop READ ClientTop)
    Q_PROPERTY(double ClientWidth READ ClientWidth)
    Q_PROPERTY(double ClientHeight READ ClientHeight)

  public:
    // The strip stands behind its siblings, so that the pages' frames are seen.
    TabStrip(QWidget* container, const QString& name);

    forms::Tabs& Tabs() { return tabs_; }
    // Null where there is no tab.
    Tab* SelectedItem() const;
    // Raises Click where another tab was selected, and SubscriptOutOfRange for a tab not of this
    // strip.
    void SetSelectedItem(const Tab& tab);

    // The page inside the tabs, in twips of the strip's container; never below 0 wide or high.
    double ClientLeft() const;
    double ClientTop() const;
    double ClientWidth() const;
    double ClientHeight() const;

  Q_SIGNALS:
    // Another tab is selected, by hand or by SetSelectedItem.
    void Click();

  protected:
    QWidget* InnerWidget() const override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    ObjectRef SelectedObject() const { return Borrow(SelectedItem()); }
    int BarHeight() const;
    void LayOutBar();

    QTabBar* bar_;
    forms::Tabs tabs_;
};

}  // namespace quarv::forms
