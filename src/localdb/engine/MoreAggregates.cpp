#include "localdb/engine/MoreAggregates.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "localdb/engine/Collation.h"
#include "localdb/engine/FunctionGuard.h"
#include "localdb/engine/SqlError.h"
#include "localdb/engine/SurrogatePairs.h"
#include "localdb/engine/TypeTable.h"
#include "localdb/engine/Utf8.h"

namespace quarv::localdb::engine {

namespace {

// The running state of STDEV and VAR: number, mean and squared distance from it. Zeroed memory is
// its empty form.
struct Spread {
    int64_t count;
    double mean, squares;
};

void Spreads(sqlite3_context* context, int, sqlite3_value** values) {
    if (sqlite3_value_type(values[0]) == SQLITE_NULL) return;
    Guard(context, [&] {
        auto* spread = static_cast<Spread*>(sqlite3_aggregate_context(context, sizeof(Spread)));
        if (!spread) throw std::bad_alloc();
        const double value = sqlite3_value_double(values[0]);
        const double distance = value - spread->mean;
        ++spread->count;
        spread->mean += distance / static_cast<double>(spread->count);
        spread->squares += distance * (value - spread->mean);
    });
}

void Narrows(sqlite3_context* context, int, sqlite3_value** values) {
    auto* spread = static_cast<Spread*>(sqlite3_aggregate_context(context, 0));
    if (!spread || sqlite3_value_type(values[0]) == SQLITE_NULL) return;
    if (--spread->count == 0) {
        *spread = Spread();
        return;
    }
    const double value = sqlite3_value_double(values[0]);
    const double distance = value - spread->mean;
    spread->mean -= distance / static_cast<double>(spread->count);
    spread->squares -= distance * (value - spread->mean);
}

// `missing` is 1 for a sample, of which a single value has no spread, and 0 for the whole.
template <int missing, bool root>
void ReturnSpread(sqlite3_context* context) {
    const auto* spread = static_cast<Spread*>(sqlite3_aggregate_context(context, 0));
    if (!spread || spread->count <= missing) return;
    const double variance =
        std::max(0.0, spread->squares) / static_cast<double>(spread->count - missing);
    sqlite3_result_double(context, root ? std::sqrt(variance) : variance);
}

struct Checksum {
    int64_t count;
    int32_t bits;
};

// A value that leaves takes its bits with it in the same way as it brought them.
template <int sign>
void ChangeChecksum(sqlite3_context* context, int, sqlite3_value** values) {
    if (sqlite3_value_type(values[0]) == SQLITE_NULL) return;
    auto* sum = static_cast<Checksum*>(sqlite3_aggregate_context(context, sizeof(Checksum)));
    if (!sum) return;
    sum->count += sign;
    sum->bits ^= static_cast<int32_t>(sqlite3_value_int64(values[0]));
}

void ReturnChecksum(sqlite3_context* context) {
    const auto* sum = static_cast<Checksum*>(sqlite3_aggregate_context(context, 0));
    if (sum && sum->count > 0) sqlite3_result_int(context, sum->bits);
}

struct Any {
    bool holds, unknown;
};

void AddCondition(sqlite3_context* context, int, sqlite3_value** values) {
    auto* any = static_cast<Any*>(sqlite3_aggregate_context(context, sizeof(Any)));
    if (!any) return;
    const bool null = sqlite3_value_type(values[0]) == SQLITE_NULL;
    any->unknown = any->unknown || null;
    any->holds = any->holds || (!null && sqlite3_value_int(values[0]) != 0);
}

void ReturnAny(sqlite3_context* context) {
    const auto* any = static_cast<Any*>(sqlite3_aggregate_context(context, 0));
    const bool unknown = any && !any->holds && any->unknown;
    if (!unknown) sqlite3_result_int(context, any && any->holds);
}

struct ValueDeleter {
    void operator()(sqlite3_value* value) const { sqlite3_value_free(value); }
};
using KeptValue = std::unique_ptr<sqlite3_value, ValueDeleter>;

std::string_view TextOf(sqlite3_value* value) {
    const auto* text = reinterpret_cast<const char*>(sqlite3_value_text(value));
    return text ? std::string_view(text, static_cast<size_t>(sqlite3_value_bytes(value)))
                : std::string_view();
}

int CompareNumbers(sqlite3_value* a, sqlite3_value* b) {
    if (sqlite3_value_type(a) == SQLITE_INTEGER && sqlite3_value_type(b) == SQLITE_INTEGER) {
        const int64_t x = sqlite3_value_int64(a), y = sqlite3_value_int64(b);
        return x < y ? -1 : x > y;
    }
    const double x = sqlite3_value_double(a), y = sqlite3_value_double(b);
    return x < y ? -1 : x > y;
}

// Two values of one type in storage form; null comes first.
int CompareKeys(sqlite3_value* a, sqlite3_value* b, TextOrder textOrder) {
    const bool nullA = sqlite3_value_type(a) == SQLITE_NULL;
    const bool nullB = sqlite3_value_type(b) == SQLITE_NULL;
    if (nullA || nullB) return static_cast<int>(nullB) - static_cast<int>(nullA);
    switch (sqlite3_value_type(a)) {
        case SQLITE_TEXT:
            return Collation::Compare(TextOf(a), TextOf(b), textOrder);
        case SQLITE_BLOB: {
            const int sizeA = sqlite3_value_bytes(a), sizeB = sqlite3_value_bytes(b);
            const auto size = static_cast<size_t>(std::min(sizeA, sizeB));
            const int order = std::memcmp(sqlite3_value_blob(a), sqlite3_value_blob(b), size);
            return order != 0 ? order : sizeA - sizeB;
        }
        default:
            return CompareNumbers(a, b);
    }
}

struct Joined {
    struct Part {
        std::string text, separator;
        std::vector<KeptValue> keys;
    };
    SqlType type;
    std::string directions;  // for each key 'a' or 'd' and the digit of its order of texts
    std::vector<Part> parts;
    size_t bytes = 0;

    static constexpr size_t MaxBytes = 256 * 1024 * 1024;

    bool Before(const Part& a, const Part& b) const {
        for (size_t i = 0; 2 * i + 1 < directions.size(); ++i) {
            const auto textOrder = static_cast<TextOrder>(directions[2 * i + 1] - '0');
            const int order = CompareKeys(a.keys[i].get(), b.keys[i].get(), textOrder);
            if (order != 0) return (order < 0) == (directions[2 * i] == 'a');
        }
        return false;
    }
};

void Join(sqlite3_context* context, int count, sqlite3_value** values) {
    Guard(context, [&] {
        if (sqlite3_value_type(values[2]) == SQLITE_NULL) return;
        auto& joined = StateOf<Joined>(context);
        if (joined.parts.empty()) {
            joined.type = UnpackType(sqlite3_value_int64(values[0]));
            joined.directions = TextOf(values[1]);
        }
        Joined::Part part{std::string(TextOf(values[2])), std::string(TextOf(values[3])), {}};
        joined.bytes += part.text.size() + part.separator.size();
        if (joined.bytes > Joined::MaxBytes) throw SqlError(8623);
        for (int i = 4; i < count; ++i) part.keys.emplace_back(sqlite3_value_dup(values[i]));
        joined.parts.push_back(std::move(part));
    });
}

void ReturnJoined(sqlite3_context* context) {
    Guard(context, [&] {
        const std::unique_ptr<Joined> joined = TakeState<Joined>(context);
        if (!joined) return;
        std::stable_sort(joined->parts.begin(), joined->parts.end(),
                         [&joined](const auto& a, const auto& b) { return joined->Before(a, b); });
        std::string text;
        text.reserve(joined->bytes);
        for (size_t i = 0; i < joined->parts.size(); ++i) {
            if (i > 0) text += joined->parts[i].separator;
            text += joined->parts[i].text;
        }
        text = JoinPairs(std::move(text));
        const int length = joined->type.length;
        if (length != SqlType::Max && Utf16Length(text) > static_cast<size_t>(length)) {
            throw SqlError(9829);
        }
        sqlite3_result_text64(context, text.data(), text.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
    });
}

void Level(sqlite3_context* context, int, sqlite3_value** values) {
    Guard(context, [&] {
        const int64_t depth = sqlite3_value_int64(values[0]) + 1;
        const int64_t limit = sqlite3_value_int64(values[1]);
        if (limit > 0 && depth > limit) throw SqlError(530, {QString::number(limit)});
        sqlite3_result_int64(context, depth);
    });
}

}  // namespace

void RegisterMoreAggregates(Store& store) {
    sqlite3* handle = store.Handle();
    const int flags = SQLITE_UTF8 | SQLITE_DIRECTONLY;
    using Step = void (*)(sqlite3_context*, int, sqlite3_value**);
    using Value = void (*)(sqlite3_context*);
    const auto window = [&](const char* name, Step add, Value value, Step take) {
        sqlite3_create_window_function(handle, name, 1, flags, &store, add, value, value, take,
                                       nullptr);
    };
    window("q_stdev", Spreads, ReturnSpread<1, true>, Narrows);
    window("q_stdevp", Spreads, ReturnSpread<0, true>, Narrows);
    window("q_var", Spreads, ReturnSpread<1, false>, Narrows);
    window("q_varp", Spreads, ReturnSpread<0, false>, Narrows);
    window("q_checksum", ChangeChecksum<1>, ReturnChecksum, ChangeChecksum<-1>);
    sqlite3_create_function_v2(handle, "q_any", 1, flags, &store, nullptr, AddCondition, ReturnAny,
                               nullptr);
    sqlite3_create_function_v2(handle, "q_join", -1, flags, &store, nullptr, Join, ReturnJoined,
                               nullptr);
    sqlite3_create_function_v2(handle, "q_level", 2, flags, &store, Level, nullptr, nullptr,
                               nullptr);
}

}  // namespace quarv::localdb::engine
