// sys.databases, sys.database_principals and what older programs read instead.
#include "localdb/catalog/CatalogColumns.h"
#include "localdb/catalog/SystemCatalog.h"
#include "localdb/catalog/ViewBuilder.h"
#include "localdb/engine/Collation.h"

namespace quarv::localdb::catalog {

using engine::SystemView;

namespace {

constexpr const char* Schema = "sys";

// Of the login "sa".
constexpr const char* OwnerSid = "x'01'";

std::string CollationName() {
    return '\'' + std::string(engine::Collation::Name) + '\'';
}

void AddBits(ViewBuilder& view, std::initializer_list<const char*> names, const char* value,
             bool nullable = true) {
    for (const char* name : names) view.Add(Bit(name, nullable), value);
}

void AddDatabaseState(ViewBuilder& view) {
    view.Add(TinyInt("user_access"), "0").Add(NVarChar("user_access_desc", 60), "'MULTI_USER'");
    AddBits(view, {"is_read_only"}, "0");
    AddBits(view, {"is_auto_close_on"}, "0", false);
    AddBits(view, {"is_auto_shrink_on"}, "0");
    view.Add(TinyInt("state"), "0").Add(NVarChar("state_desc", 60), "'ONLINE'");
    AddBits(view, {"is_in_standby", "is_cleanly_shutdown", "is_supplemental_logging_enabled"}, "0");
    view.Add(TinyInt("snapshot_isolation_state"), "0")
        .Add(NVarChar("snapshot_isolation_state_desc", 60), "'OFF'");
    AddBits(view, {"is_read_committed_snapshot_on"}, "1");
    view.Add(TinyInt("recovery_model"), "3")
        .Add(NVarChar("recovery_model_desc", 60), "'SIMPLE'")
        .Add(TinyInt("page_verify_option"), "2")
        .Add(NVarChar("page_verify_option_desc", 60), "'CHECKSUM'");
}

// The options of a database: off, as in a new one, but for statistics.
void AddDatabaseOptions(ViewBuilder& view) {
    AddBits(view, {"is_auto_create_stats_on"}, "1");
    AddBits(view, {"is_auto_create_stats_incremental_on"}, "0");
    AddBits(view, {"is_auto_update_stats_on"}, "1");
    AddBits(view,
            {"is_auto_update_stats_async_on", "is_ansi_null_default_on", "is_ansi_nulls_on",
             "is_ansi_padding_on", "is_ansi_warnings_on", "is_arithabort_on",
             "is_concat_null_yields_null_on", "is_numeric_roundabort_on", "is_quoted_identifier_on",
             "is_recursive_triggers_on", "is_cursor_close_on_commit_on", "is_local_cursor_default"},
            "0");
    AddBits(view, {"is_fulltext_enabled", "is_trustworthy_on", "is_db_chaining_on"}, "0");
    AddBits(view,
            {"is_parameterization_forced", "is_master_key_encrypted_by_server", "is_query_store_on",
             "is_published", "is_subscribed", "is_merge_published", "is_distributor",
             "is_sync_with_backup"},
            "0", false);
    view.Add(Guid("service_broker_guid", false), "zeroblob(16)");
    AddBits(view, {"is_broker_enabled"}, "0", false);
    view.Add(TinyInt("log_reuse_wait"), "0").Add(NVarChar("log_reuse_wait_desc", 60), "'NOTHING'");
    AddBits(view, {"is_date_correlation_on", "is_cdc_enabled"}, "0", false);
    AddBits(view, {"is_encrypted", "is_honor_broker_priority_on"}, "0");
}

// The languages are those of contained databases, which these are not.
void AddDatabaseKind(ViewBuilder& view) {
    view.AddNulls({Guid("replica_id"), Guid("group_database_id"), Int("resource_pool_id"),
                   SmallInt("default_language_lcid"), NVarChar("default_language_name", 128),
                   Int("default_fulltext_language_lcid"),
                   NVarChar("default_fulltext_language_name", 128), Bit("is_nested_triggers_on"),
                   Bit("is_transform_noise_words_on"), SmallInt("two_digit_year_cutoff")})
        .Add(TinyInt("containment"), "0")
        .Add(NVarChar("containment_desc", 60), "'NONE'")
        .Add(Int("target_recovery_time_in_seconds"), "60")
        .Add(Int("delayed_durability"), "0")
        .Add(NVarChar("delayed_durability_desc", 60), "'DISABLED'");
    AddBits(view,
            {"is_memory_optimized_elevate_to_snapshot_on", "is_federation_member",
             "is_remote_data_archive_enabled", "is_mixed_page_allocation_on"},
            "0");
    AddBits(view, {"is_temporal_history_retention_enabled"}, "1");
    view.Add(Int("catalog_collation_type"), "0")
        .Add(NVarChar("catalog_collation_type_desc", 60), "'DATABASE_DEFAULT'")
        .Add(NVarChar("physical_database_name", 128), "d.column2");
    AddBits(view,
            {"is_result_set_caching_on", "is_accelerated_database_recovery_on",
             "is_tempdb_spill_to_remote_store", "is_stale_page_detection_on",
             "is_memory_optimized_enabled", "is_data_retention_enabled", "is_ledger_on",
             "is_change_feed_enabled"},
            "0");
}

SystemView Databases() {
    ViewBuilder view(Schema, "databases");
    view.Add(Sysname("name", false), "d.column2")
        .Add(Int("database_id", false), "d.column1")
        .AddNulls({Int("source_database_id")})
        .Add(VarBinary("owner_sid", 85), OwnerSid)
        .Add(DateTime("create_date", false), "d.column3")
        .Add(TinyInt("compatibility_level", false), "160")
        .Add(Sysname("collation_name"), CollationName());
    AddDatabaseState(view);
    AddDatabaseOptions(view);
    AddDatabaseKind(view);
    return view.From("FROM :databases d");
}

SystemView OldDatabases() {
    ViewBuilder view(Schema, "sysdatabases");
    view.Add(Sysname("name"), "d.column2")
        .Add(SmallInt("dbid"), "d.column1")
        .Add(VarBinary("sid", 85), OwnerSid)
        .Add(SmallInt("mode"), "0")
        .Add(Int("status"), "65544")
        .Add(Int("status2"), "1090519040")
        .Add(DateTime("crdate", false), "d.column3")
        .Add(DateTime("reserved"), "0")
        .Add(Int("category"), "0")
        .Add(TinyInt("cmptlevel"), "160")
        .Add(NVarChar("filename", 260), "d.column2")
        .Add(SmallInt("version"), "957");
    return view.From("FROM :databases d");
}

// The fixed principals of every database: type "R" is a role, "S" a user.
constexpr const char* Principals =
    "(VALUES (0, 'public', 'R', NULL), (1, 'dbo', 'S', 'dbo'), (2, 'guest', 'S', 'guest'),"
    " (3, 'INFORMATION_SCHEMA', 'S', NULL), (4, 'sys', 'S', NULL), (16384, 'db_owner', 'R', NULL),"
    " (16385, 'db_accessadmin', 'R', NULL), (16386, 'db_securityadmin', 'R', NULL),"
    " (16387, 'db_ddladmin', 'R', NULL), (16389, 'db_backupoperator', 'R', NULL),"
    " (16390, 'db_datareader', 'R', NULL), (16391, 'db_datawriter', 'R', NULL),"
    " (16392, 'db_denydatareader', 'R', NULL), (16393, 'db_denydatawriter', 'R', NULL)) p";

// When the database was made, and so were they.
constexpr const char* PrincipalsMade = "(SELECT d.column3 FROM :databases d WHERE d.column2 = :db)";

SystemView DatabasePrincipals() {
    ViewBuilder view(Schema, "database_principals");
    view.Add(Sysname("name", false), "p.column2")
        .Add(Int("principal_id", false), "p.column1")
        .Add(Char("type", 1, false), "p.column3")
        .Add(NVarChar("type_desc", 60),
             "CASE p.column3 WHEN 'R' THEN 'DATABASE_ROLE' ELSE 'SQL_USER' END")
        .Add(Sysname("default_schema_name"), "p.column4")
        .Add(DateTime("create_date", false), PrincipalsMade)
        .Add(DateTime("modify_date", false), PrincipalsMade)
        .Add(Int("owning_principal_id"), "CASE p.column3 WHEN 'R' THEN 1 END")
        .Add(Bit("is_fixed_role", false), "p.column1 >= 16384")
        .Add(Int("authentication_type", false), "p.column1 = 1")
        .Add(NVarChar("authentication_type_desc", 60),
             "CASE p.column1 WHEN 1 THEN 'INSTANCE' ELSE 'NONE' END")
        .AddNulls({Sysname("default_language_name"), Int("default_language_lcid")})
        .Add(Bit("allow_encrypted_value_modifications", false), "0");
    return view.From(std::string("FROM ") + Principals);
}

SystemView OldUsers() {
    ViewBuilder view(Schema, "sysusers");
    view.Add(SmallInt("uid"), "p.column1")
        .Add(SmallInt("status"), "0")
        .Add(Sysname("name", false), "p.column2")
        .Add(DateTime("createdate", false), PrincipalsMade)
        .Add(DateTime("updatedate", false), PrincipalsMade)
        .Add(SmallInt("altuid"), "CASE p.column3 WHEN 'R' THEN 1 END")
        .Add(SmallInt("gid"), "CASE p.column3 WHEN 'R' THEN p.column1 ELSE 0 END")
        .Add(Int("hasdbaccess"), "p.column1 = 1")
        .Add(Int("islogin"), "p.column3 = 'S'")
        .Add(Int("isntname"), "0")
        .Add(Int("isntgroup"), "0")
        .Add(Int("isntuser"), "0")
        .Add(Int("issqluser"), "p.column3 = 'S'")
        .Add(Int("isaliased"), "0")
        .Add(Int("issqlrole"), "p.column3 = 'R'")
        .Add(Int("isapprole"), "0");
    return view.From(std::string("FROM ") + Principals);
}

}  // namespace

std::vector<SystemView> DatabaseViews() {
    return {Databases(), OldDatabases(), DatabasePrincipals(), OldUsers()};
}

}  // namespace quarv::localdb::catalog
