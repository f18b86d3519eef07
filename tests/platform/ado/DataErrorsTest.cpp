#include "platform/ado/DataErrors.h"

#include "platform/ado/ErrorOf.h"

namespace quarv::test {

using ado::DataErrorCode;

TEST(DataErrors, OwnErrorsHaveTheirNumbersAndTexts) {
    const struct {
        DataErrorCode code;
        int number;
        const char* text;
    } rows[] = {
        {DataErrorCode::NoCurrentRow, -2146825267,
         "Either BOF or EOF is True, or the current record has been deleted. Requested operation "
         "requires a current record."},
        {DataErrorCode::ItemNotFound, -2146825023,
         "Item cannot be found in the collection that corresponds to the requested name or "
         "ordinal."},
        {DataErrorCode::ObjectClosed, -2146824584,
         "Operation is not allowed when the object is closed."},
        {DataErrorCode::ObjectOpen, -2146824583,
         "Operation is not allowed when the object is open."},
        {DataErrorCode::ProviderNotFound, -2146824582,
         "Provider cannot be found. It may not be properly installed."},
        {DataErrorCode::InvalidConnection, -2146824579,
         "The connection cannot be used to perform this operation. It is either closed or invalid "
         "in this context."},
    };
    for (const auto& row : rows) {
        const DataError error = ado::MakeDataError(row.code);
        EXPECT_EQ(error.Number(), row.number);
        EXPECT_EQ(error.Description(), QString(row.text));
        EXPECT_EQ(error.NativeError(), 0);
    }
}

TEST(DataErrors, DriversReportsHaveTheirNumbers) {
    const struct {
        const char* state;
        int native;
        int number;
    } rows[] = {
        {"42000", 102, -2147217900},   {"42S01", 2714, -2147217900}, {"42S22", 207, -2147217900},
        {"42S02", 208, -2147217865},   {"23000", 2627, -2147217873}, {"22001", 8152, -2147217833},
        {"22003", 220, -2147217833},   {"HY019", 8115, -2147217833}, {"HYT00", 0, -2147217871},
        {"HY008", 0, -2147217842},     {"42000", 229, -2147217911},  {"42000", 18456, -2147217843},
        {"28000", 18456, -2147217843}, {"08S01", 0, -2147467259},    {"08001", 0, -2147467259},
        {"22012", 8134, -2147467259},  {"", 0, -2147467259},
    };
    for (const auto& row : rows)
        EXPECT_EQ(ado::DataErrorNumberOf(row.state, row.native), row.number) << row.state;
}

}  // namespace quarv::test
