// MetaSchema: the tables in which every database file keeps its own catalogue, beside one storage
// table "t<object id>" with columns "c<column id>" for each table.
#pragma once

namespace quarv::localdb::engine {

// The format of a file is q_meta's "format". A new file is made in format 1 and brought to this one
// as an old file is, so that both are alike.
constexpr int MetaFormat = 2;

// q_objects: tables (U), views (V), procedures (P), key constraints (PK, UQ), foreign keys (F),
// checks (C) and defaults (D). Dates are datetimes; types are packed as TypeTable packs them.
// q_columns.computed is a computed column's expression; is_stored tells whether the storage table
// has a column for it.
extern const char* const MetaSchema;
extern const char* const MetaSchemaFrom1;

}  // namespace quarv::localdb::engine
