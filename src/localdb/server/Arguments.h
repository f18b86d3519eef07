// Arguments: the parameters of a procedure call as the engine takes them: values as text in the
// form of a T-SQL literal.
#pragma once

#include <vector>

#include "localdb/engine/Session.h"
#include "localdb/tds/RpcRequest.h"

namespace quarv::localdb::server {

// Raises ProtocolError for contents that are none of their type's.
engine::Argument ArgumentOf(const tds::RpcParameter& parameter);
std::vector<engine::Argument> ArgumentsOf(const std::vector<tds::RpcParameter>& parameters);

}  // namespace quarv::localdb::server
