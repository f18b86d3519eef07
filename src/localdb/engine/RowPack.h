// RowPack: rows as one value and back. What an apply computes for a row of its left side is packed
// by q_pack(c1, c2, ...) and read again as the table q_unpack(packed), whose columns are "c1",
// "c2", ...: so the storage joins with a query that depends on the row.
#pragma once

namespace quarv::localdb::engine {

class Store;

void RegisterRowPack(Store& store);

}  // namespace quarv::localdb::engine
