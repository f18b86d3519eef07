// LanguageDocument: the page that lists what the local server's language has, each construct, type
// and function with its number of cases, and what it refuses. Made from the case files.
#pragma once

#include <QString>
#include <vector>

#include "CaseFile.h"

namespace quarv::localdb::engine {

// Markdown, with line ends of one LF.
QString LanguageDocument(const std::vector<Case>& cases);

}  // namespace quarv::localdb::engine
