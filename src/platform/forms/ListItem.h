// ListItem: one row of a ListView: its text and, for the further columns, its sub-items. The list's
// model owns it; it lives until the list is cleared.
#pragma once

#include <QString>
#include <vector>

namespace quarv::forms {

class ListModel;

class ListItem {
  public:
    ListItem(ListModel& model, int row, const QString& key, const QString& text)
        : model_(model), row_(row), key_(key), text_(text) {}

    // 1-based position in the list.
    int Index() const { return row_ + 1; }
    const QString& Key() const { return key_; }
    const QString& Text() const { return text_; }
    void SetText(const QString& text);
    // `column` 1 is the second column. Empty where nothing was set; a column that the list does
    // not have raises InvalidPropertyValue.
    QString SubItem(int column) const;
    void SetSubItem(int column, const QString& text);

  private:
    ListModel& model_;
    int row_;
    QString key_;
    QString text_;
    std::vector<QString> subItems_;
};

}  // namespace quarv::forms
