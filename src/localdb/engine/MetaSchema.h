// MetaSchema: the tables in which every database file keeps its own catalogue, beside one storage
// table "t<object id>" with columns "c<column id>" for each table.
#pragma once

namespace quarv::localdb::engine {

// q_objects: tables (U), views (V), procedures (P), key constraints (PK, UQ) and defaults (D).
// Dates are datetimes; types are packed as TypeTable packs them.
extern const char* const MetaSchema;

}  // namespace quarv::localdb::engine
