#include "localdb/engine/SqlFunctions.h"

#include <sqlite3.h>

#include "localdb/engine/CatalogFunctions.h"
#include "localdb/engine/DecimalMath.h"
#include "localdb/engine/FunctionGuard.h"
#include "localdb/engine/LikeMatcher.h"
#include "localdb/engine/MoreAggregates.h"
#include "localdb/engine/RowPack.h"
#include "localdb/engine/SqlError.h"
#include "localdb/engine/SqlWriter.h"
#include "localdb/engine/Store.h"
#include "localdb/engine/StoredForm.h"
#include "localdb/engine/TypeTable.h"

namespace quarv::localdb::engine {

namespace {

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

// The limit of the running sum is that of decimals, whatever they are summed for.
void CheckSum(Int128 total) {
    const Int128 limit = DecimalMath::PowerOfTen(38);
    if (total < limit && total > -limit) return;
    throw SqlError(8115, {QStringLiteral("expression"), QStringLiteral("numeric")});
}

[[noreturn]] void SumOverflow(const SqlType& type) {
    const bool decimal = ClassOf(type) == TypeClass::Decimal;
    throw SqlError(
        8115, {QStringLiteral("expression"), decimal ? QStringLiteral("numeric") : type.Name()});
}

// What the storage holds tells the class: decimals beyond 18 digits are bytes.
Int128 TermOf(sqlite3_value* value) {
    if (sqlite3_value_type(value) != SQLITE_BLOB) return sqlite3_value_int64(value);
    const std::optional<Int128> wide =
        DecimalMath::Load({static_cast<const char*>(sqlite3_value_blob(value)),
                           static_cast<size_t>(sqlite3_value_bytes(value))});
    if (!wide) throw SqlError(945, {QString()});
    return *wide;
}

// Adds a value, or takes away one that has left the window.
void ChangeSum(sqlite3_context* context, sqlite3_value* value, int sign) {
    const int found = sqlite3_value_type(value);
    if (found == SQLITE_NULL) return;
    auto* sum = static_cast<Sum*>(sqlite3_aggregate_context(context, sizeof(Sum)));
    if (!sum) throw std::bad_alloc();
    sum->count += sign;
    if (found == SQLITE_FLOAT) {
        sum->real += sign * sqlite3_value_double(value);
        return;
    }
    const Int128 total = sum->Wide() + sign * TermOf(value);
    CheckSum(total);
    sum->SetWide(total);
}

void AddToSum(sqlite3_context* context, int, sqlite3_value** values) {
    Guard(context, [&] { ChangeSum(context, values[0], 1); });
}

void TakeFromSum(sqlite3_context* context, int, sqlite3_value** values) {
    Guard(context, [&] { ChangeSum(context, values[0], -1); });
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
    sqlite3_create_window_function(handle, "q_sum", 1, flags, &store, AddToSum, ReturnSum,
                                   ReturnSum, TakeFromSum, nullptr);
    sqlite3_create_function_v2(handle, "q_single", 1, flags, &store, nullptr, TakeSingle,
                               ReturnSingle, nullptr);
    sqlite3_create_function_v2(handle, "q_total", 4, flags, &store, Total, nullptr, nullptr,
                               nullptr);
    sqlite3_create_function_v2(handle, "q_like", 2, flags | SQLITE_DETERMINISTIC, &store, Like,
                               nullptr, nullptr, nullptr);
    RegisterCatalogFunctions(handle);
    RegisterMoreAggregates(store);
    RegisterRowPack(store);
}

}  // namespace quarv::localdb::engine
