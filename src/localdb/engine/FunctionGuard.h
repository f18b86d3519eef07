// FunctionGuard: keeps what a function that the storage called throws: exceptions do not pass
// through the library. The function's user data is the store.
#pragma once

#include <sqlite3.h>

#include "localdb/engine/Store.h"

namespace quarv::localdb::engine {

template <class Body>
void Guard(sqlite3_context* context, Body body) {
    try {
        body();
    } catch (...) {
        static_cast<Store*>(sqlite3_user_data(context))->KeepError(std::current_exception());
        sqlite3_result_error(context, "raised", -1);
    }
}

// The aggregate's state, made at its first use and kept in the library's memory.
template <class State>
State& StateOf(sqlite3_context* context) {
    auto** state =
        static_cast<State**>(sqlite3_aggregate_context(context, static_cast<int>(sizeof(State*))));
    if (!state) throw std::bad_alloc();
    if (!*state) *state = new State;
    return **state;
}

// Takes the state away at the aggregate's end; nothing where there was no row.
template <class State>
std::unique_ptr<State> TakeState(sqlite3_context* context) {
    auto** state = static_cast<State**>(sqlite3_aggregate_context(context, 0));
    if (!state) return nullptr;
    return std::unique_ptr<State>(std::exchange(*state, nullptr));
}

}  // namespace quarv::localdb::engine
