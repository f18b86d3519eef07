#include "platform/forms/RowReader.h"

#include <QScopedValueRollback>
#include <exception>

namespace quarv::forms {

void RowReader::ReadTo(qint64 row, Errors& errors) {
    if (reading_ || source_ == nullptr) return;
    const QScopedValueRollback reading(reading_, true);
    for (int raised = 0; raised < MostErrors && !source_->AtEnd() && source_->RowCount() <= row;) {
        const qint64 before = source_->RowCount();
        try {
            source_->ReadTo(row);
            if (source_->RowCount() == before) return;
        } catch (const quarv::Error& error) {
            errors.push_back(error);
            ++raised;
        } catch (const std::exception& failure) {
            // Out of memory, say: another attempt would not do better.
            errors.emplace_back(0, QString::fromUtf8(failure.what()));
            return;
        }
    }
}

void RowReader::Condense(Errors& errors) {
    if (errors.size() <= MostTold) return;
    const size_t more = errors.size() - MostTold;
    const quarv::Error last = errors[MostTold - 1];
    while (errors.size() >= MostTold) errors.pop_back();
    errors.emplace_back(last.Number(),
                        last.Description() + QStringLiteral("\r\n(and %1 more)").arg(more));
}

qint64 RowReader::RowWanted(qint64 top, qint64 screen, qint64 rowCount) {
    if (rowCount >= top + 2 * screen) return -1;
    const qint64 ahead = rowCount == 0 ? 1 : 2;
    return top + (1 + ahead) * screen - 1;
}

}  // namespace quarv::forms
