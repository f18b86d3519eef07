#include "platform/ado/Conformance.h"
#include "platform/ado/MemoryConnection.h"

namespace quarv::test {

using namespace conformance;
using ado::MemoryResult;

std::vector<Backend> Backends() {
    const auto open = [] {
        auto connection = std::make_shared<ado::MemoryConnection>();
        connection->Script()
            .Answer(DropTable, MemoryResult::Closed())
            .Answer(CreateTable, MemoryResult::Closed())
            .Answer(Insert, MemoryResult::Closed())
            .Answer(AllRows, MemoryResult::Rows({"id", "name"}, {{1, u"one"}, {2}, {3, u"drei 😀"}}))
            .Answer(NoRows, MemoryResult::Rows({"id", "name"}))
            .Answer(Several, {MemoryResult::Rows({"id"}, {{1}, {2}, {3}}), MemoryResult::Closed(),
                              MemoryResult::Rows({"name"}, {{u"four"}})})
            .Answer(MissingTable, MemoryResult::Fails("Invalid object name 'quarv_no_such_table'.",
                                                      -2147217865, 208))
            .Answer(FailsLater, {MemoryResult::Rows({"id"}, {{1}}),
                                 MemoryResult::Fails("Violation of key.", -2147217873, 2627),
                                 MemoryResult::Rows({"id"}, {{3}})})
            .AnswerSchema(ado::Schema::Tables,
                          MemoryResult::Rows({"TABLE_NAME", "TABLE_TYPE"},
                                             {{u"quarv_conformance", u"TABLE"}}));
        connection->Open();
        return connection;
    };
    return {{"Memory", open}};
}

}  // namespace quarv::test
