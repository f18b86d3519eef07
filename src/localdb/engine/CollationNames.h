// CollationNames: the collations that a COLLATE clause can name, the order of texts that each
// stands for, and which of two wins where they meet ("Collation Precedence (Transact-SQL)").
#pragma once

#include <QString>
#include <cstdint>
#include <optional>

#include "localdb/engine/SqlType.h"
#include "localdb/engine/TextOrder.h"

namespace quarv::localdb::engine {

// The places of the table of names. Server is what columns, literals and variables have.
enum class CollationId : uint8_t { Server };

// From the weakest to the strongest.
enum class CollationLabel : uint8_t {
    Default,     // literals, variables, what functions make of other types
    Implicit,    // columns
    Unresolved,  // two columns of different collations in one value
    Explicit,    // COLLATE
};

// How an expression takes part in comparisons of texts.
struct Collating {
    CollationId id = CollationId::Server;
    CollationLabel label = CollationLabel::Default;
    bool unicode = false;                     // one of the texts at least
    bool clash = false;                       // two COLLATE clauses differ
    CollationId other = CollationId::Server;  // of a clash or an unresolved one
    TextOrder order = TextOrder::CaseInsensitive;

    // Takes another text in and settles who wins.
    void Meet(const Collating& added);
    // `order` as `id` and `unicode` say.
    void Settle();
    bool IsUnresolved() const { return clash || label == CollationLabel::Unresolved; }
};

// By the name in any letter case, database_default included. Raises SqlError 448 for a name that
// SQL Server does not know, 40517 for one that only this server lacks.
CollationId FindCollation(const QString& name);
// Nothing where this server does not have it.
std::optional<CollationId> TryFindCollation(const QString& name);
QString NameOf(CollationId id);
// The number of COLLATIONPROPERTY: 1 without case, 2 without accents, 0x30000 without kinds of
// Japanese letters and widths; 0 of a binary one.
int ComparisonStyleOf(CollationId id);
// What a column keeps: the server's collation. Raises SqlError 40517 for any other.
void RequireServerCollation(CollationId id);
// What COLLATE says of a column of this type; an empty name says nothing. Raises SqlError 447 for a
// type without a collation, and as FindCollation and RequireServerCollation do.
void CheckColumnCollation(const QString& name, const SqlType& type, int line);
// As the storage calls the order.
const char* StorageName(TextOrder order);

}  // namespace quarv::localdb::engine
