// CatalogueIcons: the six pictures of the catalogue tree, drawn from paths when they are painted,
// so that they are crisp at any scale and cost nothing at start-up. They know no tree.
#pragma once

#include <QIcon>

namespace quarv {

// Positions in the window's image list, 1-based.
enum CatalogueIcon : int {
    TableIcon = 1,
    DatabaseIcon = 2,
    ViewIcon = 3,  // in the list, and no node uses it
    TablesIcon = 4,
    ProcedureIcon = 5,
    RoutinesIcon = 6,
};

QIcon MakeCatalogueIcon(CatalogueIcon which);

}  // namespace quarv
