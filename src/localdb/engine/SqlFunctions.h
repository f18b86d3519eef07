// SqlFunctions: what storage SQL calls back for: the evaluation of expressions and the aggregates
// that count by this server's types.
#pragma once

namespace quarv::localdb::engine {

class Store;

// q_eval(program, leaves...), q_sum(value), q_total(sum, ...), q_single(value), q_like(text,
// pattern), and q_type_*(packed type) for the catalogue's views.
void RegisterSqlFunctions(Store& store);

}  // namespace quarv::localdb::engine
