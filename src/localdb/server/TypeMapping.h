// TypeMapping: the engine's types as the wire describes them, and back for parameters.
#pragma once

#include "localdb/engine/ResultSink.h"
#include "localdb/tds/ColMetadata.h"

namespace quarv::localdb::server {

// Always the nullable form of a type, which carries nulls whatever the column says.
tds::TypeInfo WireTypeOf(const engine::SqlType& type);

tds::ColumnInfo WireColumnOf(const engine::Column& column);

// The type of a parameter that came over the wire; (n)text and image become (max) types. Raises
// ProtocolError ParameterType for a type that the engine has none for.
engine::SqlType EngineTypeOf(const tds::TypeInfo& type);

}  // namespace quarv::localdb::server
