// What every implementation of Connection must do alike. A program that links ConformanceTest.cpp
// says with Backends() which implementations, and which servers, it runs against.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/ado/Connection.h"

namespace quarv::test {

struct Backend {
    std::string name;
    // A new open connection, on which ConformanceSetup has not been run.
    std::function<ado::ConnectionPtr()> open;
};

// Defined by the program; may be empty where it has no server.
std::vector<Backend> Backends();

// The statements that the suite sends. A server runs them; a scripted connection answers them.
namespace conformance {
// Three rows: 1 "one", 2 NULL, 3 "drei 😀".
extern const QString DropTable, CreateTable, Insert, AllRows, NoRows, Several, MissingTable,
    FailsLater;
}  // namespace conformance

}  // namespace quarv::test
