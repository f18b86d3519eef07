// FileFilters: the filters of a file dialog, as the platform writes them and as Qt does.
#pragma once

#include <QStringList>

namespace quarv::forms {

// "Text (*.txt)|*.txt|All files|*.*", descriptions and patterns in turn, becomes "Text (*.txt)" and
// "All files (*)". Several patterns stand with ";" between them. A description without a pattern,
// the whole text too where it has no "|", is for all files. No text gives no filter.
QStringList NameFilters(const QString& filter);

}  // namespace quarv::forms
