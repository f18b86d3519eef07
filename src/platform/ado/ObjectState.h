// Whether a connection or a record set is open, by the numbers of the ADO API reference
// ("ObjectStateEnum").
#pragma once

namespace quarv::ado {

enum ObjectState : int { adStateClosed = 0, adStateOpen = 1 };

}  // namespace quarv::ado
