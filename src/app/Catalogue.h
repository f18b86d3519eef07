// Catalogue: reads an open database's tables and procedures and hands them out as the nodes of a
// tree, in the order the server returns them. It holds nothing and knows no widget.
#pragma once

#include <QString>
#include <functional>

#include "app/CatalogueIcons.h"

namespace quarv {

class SQLServerConnection;

// Called once a node; an empty `parent` makes the root. What it raises ends the reading.
using AddCatalogueNode = std::function<void(const QString& parent, const QString& key,
                                            const QString& text, CatalogueIcon image)>;

// The root, which carries the server's version behind the description, and the two groups.
void ReadRoot(SQLServerConnection& connection, const AddCatalogueNode& add);
void ReadTables(SQLServerConnection& connection, const AddCatalogueNode& add);
void ReadProcedures(SQLServerConnection& connection, const AddCatalogueNode& add);

// What a node's key stands for; prefixes match in any letter case.
bool IsTableKey(const QString& key);
bool IsProcedureKey(const QString& key);

}  // namespace quarv
