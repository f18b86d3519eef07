#include "localdb/engine/MetaSchema.h"

namespace quarv::localdb::engine {

// Format 1.
const char* const MetaSchema = R"sql(
CREATE TABLE q_meta(key TEXT PRIMARY KEY, value) WITHOUT ROWID;
INSERT INTO q_meta VALUES ('format', 1), ('next_object', 100001);

CREATE TABLE q_schemas(schema_id INTEGER PRIMARY KEY, name TEXT NOT NULL COLLATE tsql);
INSERT INTO q_schemas VALUES (1, 'dbo'), (2, 'guest'), (3, 'INFORMATION_SCHEMA'), (4, 'sys');

CREATE TABLE q_objects(
    object_id INTEGER PRIMARY KEY,
    schema_id INTEGER NOT NULL,
    parent_id INTEGER NOT NULL DEFAULT 0,
    type TEXT NOT NULL,
    name TEXT NOT NULL COLLATE tsql,
    created INTEGER NOT NULL,
    modified INTEGER NOT NULL,
    definition TEXT);
CREATE UNIQUE INDEX q_objects_name ON q_objects(name, schema_id);
CREATE INDEX q_objects_parent ON q_objects(parent_id) WHERE parent_id <> 0;
CREATE INDEX q_objects_type ON q_objects(type, schema_id, name);

CREATE TABLE q_columns(
    object_id INTEGER NOT NULL,
    column_id INTEGER NOT NULL,
    name TEXT NOT NULL COLLATE tsql,
    type INTEGER NOT NULL,
    nullable INTEGER NOT NULL,
    default_id INTEGER NOT NULL DEFAULT 0,
    is_sysname INTEGER NOT NULL DEFAULT 0,
    PRIMARY KEY(object_id, column_id)) WITHOUT ROWID;

CREATE TABLE q_identity(
    object_id INTEGER PRIMARY KEY,
    column_id INTEGER NOT NULL,
    seed INTEGER NOT NULL,
    increment INTEGER NOT NULL,
    last INTEGER);

CREATE TABLE q_indexes(
    object_id INTEGER NOT NULL,
    index_id INTEGER NOT NULL,
    name TEXT NOT NULL COLLATE tsql,
    is_unique INTEGER NOT NULL,
    is_clustered INTEGER NOT NULL,
    constraint_id INTEGER NOT NULL DEFAULT 0,
    PRIMARY KEY(object_id, index_id)) WITHOUT ROWID;

CREATE TABLE q_index_columns(
    object_id INTEGER NOT NULL,
    index_id INTEGER NOT NULL,
    key_no INTEGER NOT NULL,
    column_id INTEGER NOT NULL,
    descending INTEGER NOT NULL,
    PRIMARY KEY(object_id, index_id, key_no)) WITHOUT ROWID;

CREATE TABLE q_parameters(
    object_id INTEGER NOT NULL,
    parameter_id INTEGER NOT NULL,
    name TEXT NOT NULL COLLATE tsql,
    type INTEGER NOT NULL,
    is_output INTEGER NOT NULL,
    default_text TEXT,
    PRIMARY KEY(object_id, parameter_id)) WITHOUT ROWID;
)sql";

// A table of format 1 is stored in the order of its clustered key where no part of that can be
// null, and was so from its beginning.
const char* const MetaSchemaFrom1 = R"sql(
ALTER TABLE q_objects ADD COLUMN system_named INTEGER NOT NULL DEFAULT 0;
ALTER TABLE q_objects ADD COLUMN max_column INTEGER NOT NULL DEFAULT 0;
ALTER TABLE q_objects ADD COLUMN schema_bound INTEGER NOT NULL DEFAULT 0;
ALTER TABLE q_columns ADD COLUMN user_type INTEGER NOT NULL DEFAULT 0;
ALTER TABLE q_columns ADD COLUMN computed TEXT;
ALTER TABLE q_columns ADD COLUMN is_persisted INTEGER NOT NULL DEFAULT 0;
ALTER TABLE q_columns ADD COLUMN is_stored INTEGER NOT NULL DEFAULT 1;
ALTER TABLE q_columns ADD COLUMN is_rowguid INTEGER NOT NULL DEFAULT 0;
ALTER TABLE q_indexes ADD COLUMN filter TEXT;
ALTER TABLE q_indexes ADD COLUMN is_storage_key INTEGER NOT NULL DEFAULT 0;
ALTER TABLE q_index_columns ADD COLUMN included INTEGER NOT NULL DEFAULT 0;
ALTER TABLE q_parameters ADD COLUMN user_type INTEGER NOT NULL DEFAULT 0;

UPDATE q_objects SET max_column =
    (SELECT coalesce(max(c.column_id), 0) FROM q_columns c WHERE c.object_id = q_objects.object_id);
UPDATE q_objects SET system_named = 1 WHERE type IN ('PK', 'UQ', 'D') AND
    (name GLOB 'PK__*__????????????????' OR name GLOB 'UQ__*__????????????????' OR
     name GLOB 'DF__*__*__????????');
UPDATE q_indexes SET is_storage_key = 1 WHERE is_clustered AND constraint_id <> 0 AND NOT EXISTS
    (SELECT 1 FROM q_index_columns k JOIN q_columns c
     ON c.object_id = k.object_id AND c.column_id = k.column_id
     WHERE k.object_id = q_indexes.object_id AND k.index_id = q_indexes.index_id AND c.nullable);

CREATE TABLE q_types(
    user_type INTEGER PRIMARY KEY,
    schema_id INTEGER NOT NULL,
    name TEXT NOT NULL COLLATE tsql,
    type INTEGER NOT NULL,
    nullable INTEGER NOT NULL,
    is_sysname INTEGER NOT NULL DEFAULT 0);
CREATE UNIQUE INDEX q_types_name ON q_types(name, schema_id);

CREATE TABLE q_checks(
    object_id INTEGER PRIMARY KEY,
    table_id INTEGER NOT NULL,
    column_id INTEGER NOT NULL,
    is_disabled INTEGER NOT NULL,
    is_not_trusted INTEGER NOT NULL);
CREATE INDEX q_checks_table ON q_checks(table_id);

CREATE TABLE q_foreign_keys(
    object_id INTEGER PRIMARY KEY,
    table_id INTEGER NOT NULL,
    referenced_id INTEGER NOT NULL,
    key_index_id INTEGER NOT NULL,
    on_delete INTEGER NOT NULL,
    on_update INTEGER NOT NULL,
    is_disabled INTEGER NOT NULL,
    is_not_trusted INTEGER NOT NULL);
CREATE INDEX q_foreign_keys_table ON q_foreign_keys(table_id);
CREATE INDEX q_foreign_keys_referenced ON q_foreign_keys(referenced_id);

CREATE TABLE q_foreign_key_columns(
    object_id INTEGER NOT NULL,
    key_no INTEGER NOT NULL,
    column_id INTEGER NOT NULL,
    referenced_column_id INTEGER NOT NULL,
    PRIMARY KEY(object_id, key_no)) WITHOUT ROWID;

INSERT INTO q_meta VALUES ('next_schema', 5), ('next_type', 257);
UPDATE q_meta SET value = 2 WHERE key = 'format';
)sql";

}  // namespace quarv::localdb::engine
