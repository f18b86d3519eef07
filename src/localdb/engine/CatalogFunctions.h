// CatalogFunctions: what the catalogue's views ask about a packed type, as functions of storage
// SQL.
#pragma once

struct sqlite3;

namespace quarv::localdb::engine {

// q_type_name(t), q_type_text(t), q_type_number(t), q_char_length(t),
// q_octet_length(t), q_byte_length(t), q_precision(t), q_radix(t), q_scale(t), q_moment_scale(t):
// null where the catalogue shows null for the type. q_left(text, utf-16 units).
// q_mentions(source, column): whether an expression names a column. q_view_tables(source): the
// tables that a view names, as a JSON array of [database, schema, name]; q_view_columns(source):
// its columns, as one of [reference, depth, database, schema, table, column]. q_row_count(table):
// how many rows a storage table has.
void RegisterCatalogFunctions(sqlite3* handle);

}  // namespace quarv::localdb::engine
