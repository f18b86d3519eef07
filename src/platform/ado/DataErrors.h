// The numbers and texts of data-access errors, in one table: those that this layer raises itself,
// and the number that a driver's SQLSTATE or a server's message number stands for. Knows no driver.
#pragma once

#include "base/DataError.h"

namespace quarv::ado {

// The layer's own errors by their small numbers (the ADO API reference, "ErrorValueEnum").
enum class DataErrorCode : int {
    NoCurrentRow = 3021,
    ItemNotFound = 3265,
    ObjectClosed = 3704,
    ObjectOpen = 3705,
    ProviderNotFound = 3706,
    InvalidConnection = 3709,
};

// The signed 32-bit number that programs see for `code`: 0x800A0000 + code.
constexpr int DataErrorNumber(DataErrorCode code) {
    return static_cast<int>(0x800A0000U + static_cast<unsigned>(code));
}

// The error with its own text from the table.
DataError MakeDataError(DataErrorCode code);

// The number of an error that names no more precise cause.
constexpr int UnspecifiedDataError = -2147467259;

// The number for what a driver reported. The server's message number decides where it is listed,
// then the SQLSTATE; the unspecified error stands for the rest.
int DataErrorNumberOf(const QString& sqlState, int nativeError);

}  // namespace quarv::ado
