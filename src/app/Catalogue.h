// Catalogue: reads an open database's tables and procedures and gives them as what the main
// window's tree shows, in the order the server returns them. It holds nothing and knows no widget.
#pragma once

#include <QString>
#include <vector>

#include "app/CatalogueIcons.h"

namespace quarv {

class SQLServerConnection;

// The nodes at the top of the tree: the database, and under it the two groups.
struct CatalogueNode {
    QString parent;  // its key; empty for the database
    QString key;
    QString text;
    CatalogueIcon image;

    bool operator==(const CatalogueNode&) const = default;
};

// What a group holds: each name is the text of a node, and `keyPrefix` with the name its key.
struct CatalogueGroup {
    QString parent;  // the group's key
    QString keyPrefix;
    CatalogueIcon image;
    std::vector<QString> names;
};

// These raise what the server reports. The database carries the server's version behind its
// description.
std::vector<CatalogueNode> ReadRoot(SQLServerConnection& connection);
CatalogueGroup ReadTables(SQLServerConnection& connection);
CatalogueGroup ReadProcedures(SQLServerConnection& connection);

// What a node's key stands for; prefixes match in any letter case.
bool IsTableKey(const QString& key);
bool IsProcedureKey(const QString& key);

}  // namespace quarv
