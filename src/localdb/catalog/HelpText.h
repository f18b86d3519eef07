// HelpText: the lines of sp_helptext.
#pragma once

#include <QStringList>

namespace quarv::localdb::catalog {

// The source cut behind its line ends, which stay, and into parts of at most 255 UTF-16 units; a
// pair of surrogates is not cut.
QStringList HelpTextLines(const QString& source);

}  // namespace quarv::localdb::catalog
