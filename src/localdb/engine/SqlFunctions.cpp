#include "localdb/engine/SqlFunctions.h"

#include <sqlite3.h>

#include "localdb/engine/CatalogFunctions.h"
#include "localdb/engine/DecimalMath.h"
#include "localdb/engine/LikeMatcher.h"
#include "localdb/engine/SqlError.h"
#include "localdb/engine/SqlWriter.h"
#include "localdb/engine/Store.h"
#include "localdb/engine/StoredForm.h"
#include "localdb/engine/TypeTable.h"

namespace quarv::localdb::engine {

namespace {

Store& StoreOf(sqlite3_context* context) {
    return *static_cast<Store*>(sqlite3_user_data(context));
}

// Runs `body` and keeps what it throws for the statement that is running: exceptions do not pass
// through the library.
template <class Body>
void Guard(sqlite3_context* context, Body body) {
    try {
        body();
    } catch (...) {
        StoreOf(context).KeepError(std::current_exception());
        sqlite3_result_error(context, "raised", -1);
    }
}

void Evaluate(sqlite3_context* context, int count, sqlite3_value** values) {
    Guard(context, [&] {
        auto* program = static_cast<Program*>(sqlite3_value_pointer(values[0], Program::Tag));
        if (!program) throw SqlError(945, {QString()});
        for (int i = 1; i < count; ++i) {
            const auto leaf = static_cast<size_t>(i - 1);
            program->leaves[leaf] = ReadStored(values[i], program->leafTypes[leaf]);
        }
        const Evaluation evaluation{program->leaves.data(), program->arena.get(),
                                    program->environment};
        ReturnStored(context, program->root->Evaluate(evaluation), program->root->type);
        program->arena->Reset();
    });
}

// The running state of SUM and AVG; zeroed memory is its empty form.
struct Sum {
    int64_t count;
    double real;
    uint64_t wideLow;
    int64_t wideHigh;

    Int128 Wide() const { return static_cast<Int128>(wideHigh) << 64 | wideLow; }
    void SetWide(Int128 value) {
        wideLow = static_cast<uint64_t>(value);
        wideHigh = static_cast<int64_t>(value >> 64);
    }
};

[[noreturn]] void SumOverflow(const SqlType& type) {
    const bool decimal = ClassOf(type) == TypeClass::Decimal;
    throw SqlError(
        8115, {QStringLiteral("expression"), decimal ? QStringLiteral("numeric") : type.Name()});
}

void AddToSum(sqlite3_context* context, int, sqlite3_value** values) {
    Guard(context, [&] {
        const SqlType type = UnpackType(sqlite3_value_int64(values[1]));
        const SqlValue value = ReadStored(values[0], type);
        if (value.IsNull()) return;
        auto* sum = static_cast<Sum*>(sqlite3_aggregate_context(context, sizeof(Sum)));
        if (!sum) throw std::bad_alloc();
        ++sum->count;
        if (value.kind == SqlValue::Kind::Real) {
            sum->real += value.real;
            return;
        }
        const Int128 term = value.kind == SqlValue::Kind::Wide ? value.wide : Int128{value.integer};
        const Int128 total = sum->Wide() + term;
        const Int128 limit = DecimalMath::PowerOfTen(38);
        if (total >= limit || total <= -limit) SumOverflow(type);
        sum->SetWide(total);
    });
}

bool FitsInteger(Int128 value, TypeKind kind) {
    if (kind == TypeKind::Int) return value == static_cast<int32_t>(value);
    return value == static_cast<int64_t>(value);
}

void ReturnSum(sqlite3_context* context) {
    Guard(context, [&] {
        const auto* sum = static_cast<Sum*>(sqlite3_aggregate_context(context, 0));
        if (!sum || sum->count == 0) {
            sqlite3_result_null(context);
            return;
        }
        // Carried with its count: AVG divides, SUM checks, each by its own type.
        char bytes[sizeof(Sum)];
        std::copy_n(reinterpret_cast<const char*>(sum), sizeof(Sum), bytes);
        sqlite3_result_blob(context, bytes, sizeof bytes, SQLITE_TRANSIENT);
    });
}

// q_total(sum, result type, divided): what SUM or AVG gives for a sum.
void Total(sqlite3_context* context, int, sqlite3_value** values) {
    Guard(context, [&] {
        if (sqlite3_value_type(values[0]) == SQLITE_NULL) return;
        if (sqlite3_value_bytes(values[0]) != sizeof(Sum)) throw SqlError(945, {QString()});
        Sum sum;
        std::copy_n(static_cast<const char*>(sqlite3_value_blob(values[0])), sizeof sum,
                    reinterpret_cast<char*>(&sum));
        const SqlType type = UnpackType(sqlite3_value_int64(values[1]));
        const bool divided = sqlite3_value_int(values[2]) != 0;
        const int scale = sqlite3_value_int(values[3]);
        if (ClassOf(type) == TypeClass::Real) {
            const double real = divided ? sum.real / static_cast<double>(sum.count) : sum.real;
            ReturnStored(context, SqlValue::Real(real), type);
            return;
        }
        if (ClassOf(type) == TypeClass::Decimal) {
            const std::optional<Int128> wide =
                divided ? DecimalMath::Divide(sum.Wide(), scale, sum.count, 0, type.precision,
                                              type.scale)
                        : DecimalMath::Rescale(sum.Wide(), scale, type.precision, type.scale);
            if (!wide) SumOverflow(type);
            ReturnStored(context, SqlValue::Wide(*wide), type);
            return;
        }
        const Int128 value = divided ? sum.Wide() / sum.count : sum.Wide();
        if (!FitsInteger(value, type.kind)) SumOverflow(type);
        ReturnStored(context, SqlValue::Integer(static_cast<int64_t>(value)), type);
    });
}

// The value of a query that may give one row at most.
struct Single {
    sqlite3_value* value;
};

void TakeSingle(sqlite3_context* context, int, sqlite3_value** values) {
    Guard(context, [&] {
        auto* single = static_cast<Single*>(sqlite3_aggregate_context(context, sizeof(Single)));
        if (!single) throw std::bad_alloc();
        if (single->value) throw SqlError(512);
        single->value = sqlite3_value_dup(values[0]);
    });
}

void ReturnSingle(sqlite3_context* context) {
    auto* single = static_cast<Single*>(sqlite3_aggregate_context(context, 0));
    if (!single || !single->value) return;
    sqlite3_result_value(context, single->value);
    sqlite3_value_free(single->value);
}

std::string_view TextOf(sqlite3_value* value) {
    const auto* text = reinterpret_cast<const char*>(sqlite3_value_text(value));
    return text ? std::string_view(text, static_cast<size_t>(sqlite3_value_bytes(value)))
                : std::string_view();
}

void Like(sqlite3_context* context, int, sqlite3_value** values) {
    if (sqlite3_value_type(values[0]) == SQLITE_NULL ||
        sqlite3_value_type(values[1]) == SQLITE_NULL) {
        return;
    }
    sqlite3_result_int(context, MatchesLike(TextOf(values[0]), TextOf(values[1])));
}

}  // namespace

void RegisterSqlFunctions(Store& store) {
    sqlite3* handle = store.Handle();
    const int flags = SQLITE_UTF8 | SQLITE_DIRECTONLY;
    sqlite3_create_function_v2(handle, "q_eval", -1, flags, &store, Evaluate, nullptr, nullptr,
                               nullptr);
    sqlite3_create_function_v2(handle, "q_sum", 2, flags, &store, nullptr, AddToSum, ReturnSum,
                               nullptr);
    sqlite3_create_function_v2(handle, "q_single", 1, flags, &store, nullptr, TakeSingle,
                               ReturnSingle, nullptr);
    sqlite3_create_function_v2(handle, "q_total", 4, flags, &store, Total, nullptr, nullptr,
                               nullptr);
    sqlite3_create_function_v2(handle, "q_like", 2, flags | SQLITE_DETERMINISTIC, &store, Like,
                               nullptr, nullptr, nullptr);
    RegisterCatalogFunctions(handle);
}

}  // namespace quarv::localdb::engine
