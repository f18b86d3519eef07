#include "localdb/catalog/InformationNames.h"

#include "localdb/catalog/CatalogColumns.h"

namespace quarv::localdb::catalog {

const char* const CharacterSetOfType =
    "CASE WHEN q_type_number(c.type) IN (99, 231, 239) THEN 'UNICODE'"
    " WHEN q_type_number(c.type) IN (35, 167, 175) THEN 'iso_1' END";

void AddName(ViewBuilder& view, const std::string& what) {
    AddNameOf(view, what, "s.name", "o.name");
}

void AddNameOf(ViewBuilder& view, const std::string& what, const std::string& schema,
               const std::string& name, bool nullable) {
    view.Add(NVarChar((what + "_CATALOG").c_str(), 128),
             nullable ? "CASE WHEN " + name + " IS NOT NULL THEN :db END" : ":db")
        .Add(NVarChar((what + "_SCHEMA").c_str(), 128), schema)
        .Add(Sysname((what + "_NAME").c_str(), nullable), name);
}

void AddNoName(ViewBuilder& view, const std::string& what) {
    view.AddNulls({Sysname((what + "_CATALOG").c_str()), Sysname((what + "_SCHEMA").c_str()),
                   Sysname((what + "_NAME").c_str())});
}

void AddOnlyName(ViewBuilder& view, const std::string& what, const std::string& expression) {
    view.AddNulls({Sysname((what + "_CATALOG").c_str()), Sysname((what + "_SCHEMA").c_str())});
    view.Add(Sysname((what + "_NAME").c_str()), expression);
}

void AddDigits(ViewBuilder& view) {
    view.Add(TinyInt("NUMERIC_PRECISION"), "q_precision(c.type)")
        .Add(SmallInt("NUMERIC_PRECISION_RADIX"), "q_radix(c.type)")
        .Add(Int("NUMERIC_SCALE"), "q_scale(c.type)")
        .Add(SmallInt("DATETIME_PRECISION"), "q_moment_scale(c.type)");
}

}  // namespace quarv::localdb::catalog
