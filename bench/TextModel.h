// TextModel: texts that another control shows, in a model that does nothing but give them, for a
// plain table view that paints the same cells.
#pragma once

#include <QAbstractTableModel>
#include <QStringList>
#include <memory>

namespace quarv::bench {

class TextModel : public QAbstractTableModel {
  public:
    // `texts` row by row; as many columns as there are `names`.
    TextModel(QStringList names, QStringList texts);
    // Holds what `from` shows now.
    static std::unique_ptr<TextModel> Of(const QAbstractItemModel& from);

    // As if the rows had just come.
    void Renew();

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation side, int role) const override;

  private:
    QStringList names_;
    QStringList texts_;
};

}  // namespace quarv::bench
