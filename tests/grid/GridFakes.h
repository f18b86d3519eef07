// What the grid's layout and editing stand between in their tests: rows that keep values, and a
// screen, editors and a host that remember what they were asked.
#pragma once

#include <algorithm>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "base/RuntimeError.h"
#include "grid/CellEditors.h"
#include "grid/GridHost.h"
#include "grid/GridScreen.h"
#include "grid/KelEditGridColumnList.h"
#include "grid/KelEditGridRowList.h"

namespace quarv::test {

class FakeRow : public KelEditGridRow {
  public:
    explicit FakeRow(qint32 status = 0) : status_(status) {}

    qint16 VisibleIndex() const override { return visible; }
    void SetVisibleIndex(qint16 position) override { visible = position; }
    qint32 PersistStatus() const override { return status_; }
    void SetPersistStatus(qint32 status) override { status_ = status; }
    Value ColumnValue(qint16 column) const override {
        if (failing) throw RuntimeError(RuntimeError::DivisionByZero);
        const auto found = values.find(column);
        return found == values.end() ? Value() : found->second;
    }
    void SetColumnValue(qint16 column, const Value& value) override {
        if (failing) throw RuntimeError(RuntimeError::DivisionByZero);
        values[column] = value;
    }
    bool IsEmpty() const override { return empty; }

    std::map<qint16, Value> values;
    qint16 visible = 0;
    bool empty = false;
    bool failing = false;  // every value raises

  private:
    qint32 status_;
};

using FakeRowRef = std::shared_ptr<FakeRow>;

// Rows of these statuses.
inline RowListRef RowsOf(const std::vector<qint32>& statuses) {
    auto rows = std::make_shared<KelEditGridRowList>();
    for (const qint32 status : statuses) rows->Add(std::make_shared<FakeRow>(status));
    return rows;
}

inline RowListRef PlainRows(int count) {
    return RowsOf(std::vector<qint32>(static_cast<size_t>(count), 0));
}

inline FakeRow& RowAt(const RowListRef& rows, qint16 position) {
    return static_cast<FakeRow&>(*rows->Items(position));
}

// Columns named A, B, ... of these widths, all of kind 0.
inline ColumnListRef ColumnsOf(const std::vector<qint32>& widths) {
    auto columns = std::make_shared<KelEditGridColumnList>();
    char16_t name = u'A';
    for (const qint32 width : widths) columns->AddColumn(QString(QChar(name++)), width, 0);
    return columns;
}

class FakeScreen : public GridScreen {
  public:
    void ShowVertical(qint16 max, qint16 page) override {
        verticalShown = true;
        verticalMax = max;
        verticalPage = page;
        verticalValue = std::min(verticalValue, max);
    }
    void HideVertical() override { verticalShown = false; }
    void SetVerticalValue(qint16 value) override {
        verticalValue = std::clamp<qint16>(value, 1, verticalMax);
    }
    void SetVerticalToMin() override { verticalValue = 1; }
    void ShowHorizontal(qint32 max, qint16 page) override {
        horizontalShown = true;
        horizontalMax = max;
        horizontalPage = page;
        horizontalValue = 0;
    }
    void HideHorizontal() override { horizontalShown = false; }
    qint32 SetHorizontalValue(qint32 value) override { return horizontalValue = value; }
    void Repaint() override { ++repaints; }

    bool verticalShown = false;
    qint16 verticalMax = 32767;
    qint16 verticalPage = 0;
    qint16 verticalValue = 1;
    bool horizontalShown = false;
    qint32 horizontalMax = 0;
    qint16 horizontalPage = 0;
    qint32 horizontalValue = 0;
    int repaints = 0;
};

class FakeEditors : public CellEditors {
  public:
    enum class Kind { None, Text, TextWithButton, List, Check };

    void HideAll() override { shown = Kind::None; }
    void ShowText(const TextStart& start, const QRectF& where) override {
        shown = start.withButton ? Kind::TextWithButton : Kind::Text;
        text = start.text;
        maxLength = start.maxLength;
        place = where;
    }
    void ShowList(const ListStart& start, const QRectF& where) override {
        shown = Kind::List;
        chosen = start.chosen;
        text = chosen < 0 ? start.text : start.choices->Items(static_cast<qint16>(chosen + 1));
        takesFreeText = start.takesFreeText;
        place = where;
    }
    void ShowCheck(bool on, const QRectF& where) override {
        shown = Kind::Check;
        checked = on;
        place = where;
    }
    void MoveTo(const QRectF& where) override { place = where; }
    QString Text() const override { return text; }
    void SetText(const QString& t) override { text = t; }
    QString ListText() const override { return text; }
    int ListIndex() const override { return chosen; }
    bool Checked() const override { return checked; }
    bool IsButtonShown() const override { return shown == Kind::TextWithButton; }

    Kind shown = Kind::None;
    QString text;
    qint32 maxLength = 0;
    int chosen = -1;
    bool takesFreeText = false;
    bool checked = false;
    QRectF place;
};

class FakeHost : public GridHost {
  public:
    void AddRow(RowRef& row) override {
        told.push_back("AddRow");
        if (onAddRow) onAddRow(row);
    }
    void DeleteRow(RowRef& row) override {
        told.push_back("DeleteRow");
        if (onDeleteRow) onDeleteRow(row);
    }
    void RowSelected(RowRef& row) override {
        told.push_back(row ? "RowSelected" : "RowSelected nothing");
    }
    void ColumnChanged(RowRef& row, ColumnRef& column) override {
        told.push_back("ColumnChanged " + column->Name.toStdString());
        if (onColumnChanged) onColumnChanged(row);
    }
    void CustomColumnElipsis(RowRef& row, ColumnRef& column) override {
        told.push_back("CustomColumnElipsis " + column->Name.toStdString());
        if (onElipsis) onElipsis(row);
    }
    void GetDirectoryForBrowse(RowRef&, ColumnRef& column, QString& directory) override {
        told.push_back("GetDirectoryForBrowse " + column->Name.toStdString());
        directory = givenDirectory;
    }
    std::optional<QString> ChooseFile(const QString& directory,
                                      const KelEditGridColumn& column) override {
        told.push_back("ChooseFile " + directory.toStdString() + " " +
                       column.BrowseText.toStdString() + " " + column.Name.toStdString());
        if (onChooseFile) onChooseFile();
        return chosenFile;
    }
    void ShowNoEditor() override { told.push_back("boom"); }

    std::vector<std::string> told;
    std::function<void(RowRef&)> onAddRow;
    std::function<void(RowRef&)> onDeleteRow;
    std::function<void(RowRef&)> onColumnChanged;
    std::function<void(RowRef&)> onElipsis;
    std::function<void()> onChooseFile;
    QString givenDirectory;
    std::optional<QString> chosenFile;
};

}  // namespace quarv::test
