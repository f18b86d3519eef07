#include "localdb/engine/MetaSchema.h"

namespace quarv::localdb::engine {

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

}  // namespace quarv::localdb::engine
