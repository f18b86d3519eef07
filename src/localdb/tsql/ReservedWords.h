// ReservedWords: the words of T-SQL that name nothing unless they are quoted ("Reserved Keywords
// (Transact-SQL)").
#pragma once

#include <QStringView>

namespace quarv::localdb::tsql {

// In any letter case.
bool IsReservedWord(QStringView word);

}  // namespace quarv::localdb::tsql
