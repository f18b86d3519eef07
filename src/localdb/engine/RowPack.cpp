#include "localdb/engine/RowPack.h"

#include <array>
#include <cstring>

#include "localdb/engine/FunctionGuard.h"
#include "localdb/engine/SqlError.h"

namespace quarv::localdb::engine {

namespace {

constexpr int MaxColumns = 126;  // the storage takes 127 arguments
constexpr size_t MaxBytes = 256 * 1024 * 1024;

// One value: its storage class, then eight bytes, which of texts and bytes are the size.
void Append(std::string& out, sqlite3_value* value) {
    const int type = sqlite3_value_type(value);
    char bytes[8] = {};
    int64_t integer = sqlite3_value_bytes(value);
    if (type == SQLITE_INTEGER) integer = sqlite3_value_int64(value);
    std::memcpy(bytes, &integer, sizeof bytes);
    if (type == SQLITE_FLOAT) {
        const double real = sqlite3_value_double(value);
        std::memcpy(bytes, &real, sizeof bytes);
    }
    out += static_cast<char>(type);
    out.append(bytes, sizeof bytes);
    if (type != SQLITE_TEXT && type != SQLITE_BLOB) return;
    const auto* data = static_cast<const char*>(sqlite3_value_blob(value));
    out.append(data ? data : "", static_cast<size_t>(sqlite3_value_bytes(value)));
}

struct Packed {
    std::string bytes;
};

void Pack(sqlite3_context* context, int count, sqlite3_value** values) {
    Guard(context, [&] {
        std::string& bytes = StateOf<Packed>(context).bytes;
        if (bytes.empty()) bytes += static_cast<char>(count);
        for (int i = 0; i < count; ++i) {
            // Asked for as text, its size is that of the text.
            if (sqlite3_value_type(values[i]) == SQLITE_TEXT) sqlite3_value_text(values[i]);
            Append(bytes, values[i]);
        }
        if (bytes.size() > MaxBytes) throw SqlError(8623);
    });
}

void ReturnPacked(sqlite3_context* context) {
    Guard(context, [&] {
        const std::unique_ptr<Packed> packed = TakeState<Packed>(context);
        if (!packed) return;
        sqlite3_result_blob64(context, packed->bytes.data(), packed->bytes.size(),
                              SQLITE_TRANSIENT);
    });
}

struct Field {
    int type = SQLITE_NULL;
    const char* data = nullptr;  // the eight bytes
    size_t size = 0;             // of what follows them
};

struct Cursor {
    sqlite3_vtab_cursor base;  // first, as the library asks
    std::string bytes;
    size_t at = 0;
    size_t width = 0;
    int64_t row = 0;
    bool atEnd = true;
    std::array<Field, MaxColumns> fields;

    bool Read(Field& field) {
        constexpr size_t Head = 9;
        if (bytes.size() - at < Head) return false;
        field.type = bytes[at];
        field.data = bytes.data() + at + 1;
        field.size = 0;
        at += Head;
        if (field.type != SQLITE_TEXT && field.type != SQLITE_BLOB) return true;
        int64_t size = 0;
        std::memcpy(&size, field.data, sizeof size);
        if (size < 0 || static_cast<size_t>(size) > bytes.size() - at) return false;
        field.size = static_cast<size_t>(size);
        at += field.size;
        return true;
    }
    void Next() {
        ++row;
        atEnd = at >= bytes.size();
        for (size_t i = 0; i < width && !atEnd; ++i) atEnd = !Read(fields[i]);
    }
};

int Connect(sqlite3* handle, void*, int, const char* const*, sqlite3_vtab** table, char**) {
    std::string columns = "CREATE TABLE q_unpack(";
    for (int i = 1; i <= MaxColumns; ++i) columns += 'c' + std::to_string(i) + ',';
    const int result = sqlite3_declare_vtab(handle, (columns + "packed HIDDEN)").c_str());
    if (result != SQLITE_OK) return result;
    *table = new (std::nothrow) sqlite3_vtab();
    return *table ? SQLITE_OK : SQLITE_NOMEM;
}

int Disconnect(sqlite3_vtab* table) {
    delete table;
    return SQLITE_OK;
}

// Without its argument the table has no meaning, so that plan is refused.
int BestIndex(sqlite3_vtab*, sqlite3_index_info* info) {
    for (int i = 0; i < info->nConstraint; ++i) {
        const auto& constraint = info->aConstraint[i];
        const bool argument =
            constraint.iColumn == MaxColumns && constraint.op == SQLITE_INDEX_CONSTRAINT_EQ;
        if (!argument || !constraint.usable) continue;
        info->aConstraintUsage[i].argvIndex = 1;
        info->aConstraintUsage[i].omit = 1;
        info->estimatedCost = 10;
        info->estimatedRows = 10;
        return SQLITE_OK;
    }
    return SQLITE_CONSTRAINT;
}

int Open(sqlite3_vtab*, sqlite3_vtab_cursor** cursor) {
    auto* made = new (std::nothrow) Cursor();
    if (!made) return SQLITE_NOMEM;
    *cursor = &made->base;
    return SQLITE_OK;
}

Cursor& CursorOf(sqlite3_vtab_cursor* cursor) {
    return *reinterpret_cast<Cursor*>(cursor);
}

int Close(sqlite3_vtab_cursor* cursor) {
    delete &CursorOf(cursor);
    return SQLITE_OK;
}

int Filter(sqlite3_vtab_cursor* base, int, const char*, int count, sqlite3_value** values) {
    Cursor& cursor = CursorOf(base);
    const bool packed = count == 1 && sqlite3_value_type(values[0]) == SQLITE_BLOB;
    cursor.bytes.clear();
    if (packed) {
        cursor.bytes.assign(static_cast<const char*>(sqlite3_value_blob(values[0])),
                            static_cast<size_t>(sqlite3_value_bytes(values[0])));
    }
    cursor.width = cursor.bytes.empty() ? 0 : static_cast<size_t>(cursor.bytes[0]);
    if (cursor.width > MaxColumns) return SQLITE_CORRUPT;
    cursor.at = 1;
    cursor.row = 0;
    cursor.Next();
    return SQLITE_OK;
}

int Next(sqlite3_vtab_cursor* cursor) {
    CursorOf(cursor).Next();
    return SQLITE_OK;
}

int AtEnd(sqlite3_vtab_cursor* cursor) {
    return CursorOf(cursor).atEnd;
}

int ReturnColumn(sqlite3_vtab_cursor* base, sqlite3_context* context, int column) {
    const Cursor& cursor = CursorOf(base);
    if (column < 0 || static_cast<size_t>(column) >= cursor.width) return SQLITE_OK;
    const Field& field = cursor.fields[static_cast<size_t>(column)];
    int64_t integer = 0;
    double real = 0;
    std::memcpy(&integer, field.data, sizeof integer);
    std::memcpy(&real, field.data, sizeof real);
    const char* data = field.data + sizeof integer;
    switch (field.type) {
        case SQLITE_INTEGER:
            sqlite3_result_int64(context, integer);
            break;
        case SQLITE_FLOAT:
            sqlite3_result_double(context, real);
            break;
        case SQLITE_TEXT:
            sqlite3_result_text64(context, data, field.size, SQLITE_TRANSIENT, SQLITE_UTF8);
            break;
        case SQLITE_BLOB:
            sqlite3_result_blob64(context, data, field.size, SQLITE_TRANSIENT);
            break;
        default:
            break;
    }
    return SQLITE_OK;
}

int RowNumber(sqlite3_vtab_cursor* cursor, sqlite3_int64* row) {
    *row = CursorOf(cursor).row;
    return SQLITE_OK;
}

// Usable in a query's FROM without having been created: it has no xCreate.
const sqlite3_module& Module() {
    static const sqlite3_module module = [] {
        sqlite3_module made{};
        made.xConnect = Connect;
        made.xDisconnect = Disconnect;
        made.xBestIndex = BestIndex;
        made.xOpen = Open;
        made.xClose = Close;
        made.xFilter = Filter;
        made.xNext = Next;
        made.xEof = AtEnd;
        made.xColumn = ReturnColumn;
        made.xRowid = RowNumber;
        return made;
    }();
    return module;
}

}  // namespace

void RowPacker::Append(int type, int64_t number) {
    char bytes[sizeof number];
    std::memcpy(bytes, &number, sizeof bytes);
    bytes_ += static_cast<char>(type);
    bytes_.append(bytes, sizeof bytes);
}

void RowPacker::Add(std::string_view text) {
    if (bytes_.size() + text.size() > MaxBytes) throw SqlError(8623);
    Append(SQLITE_TEXT, static_cast<int64_t>(text.size()));
    bytes_ += text;
}

void RowPacker::Add(int64_t integer) {
    if (bytes_.size() > MaxBytes) throw SqlError(8623);
    Append(SQLITE_INTEGER, integer);
}

void RegisterRowPack(Store& store) {
    sqlite3* handle = store.Handle();
    sqlite3_create_function_v2(handle, "q_pack", -1, SQLITE_UTF8 | SQLITE_DIRECTONLY, &store,
                               nullptr, Pack, ReturnPacked, nullptr);
    sqlite3_create_module_v2(handle, "q_unpack", &Module(), nullptr, nullptr);
}

}  // namespace quarv::localdb::engine
