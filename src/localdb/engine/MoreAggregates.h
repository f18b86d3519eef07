// MoreAggregates: the aggregates beyond COUNT, SUM and their kin that storage SQL calls back for.
#pragma once

namespace quarv::localdb::engine {

class Store;

// q_stdev(x), q_stdevp(x), q_var(x), q_varp(x), q_checksum(x), also over windows;
// q_join(type, directions, text, separator, keys...), q_any(condition), and q_level(depth, limit),
// which counts how deep a query that refers to itself has come.
void RegisterMoreAggregates(Store& store);

}  // namespace quarv::localdb::engine
