// NEWID, HASHBYTES, CHECKSUM and BINARY_CHECKSUM.
#include <QCryptographicHash>
#include <QRandomGenerator>
#include <algorithm>
#include <array>

#include "base/CodePage1252.h"
#include "localdb/engine/Conversion.h"
#include "localdb/engine/FunctionTools.h"
#include "localdb/engine/Guid.h"
#include "localdb/engine/SqlError.h"
#include "localdb/engine/Utf8.h"

namespace quarv::localdb::engine {

namespace {

// A random UUID (RFC 4122, version 4), another for each row.
SqlValue NewId(const BoundCall&, const SqlValue*, const Evaluation& evaluation) {
    std::array<quint32, 4> words;
    QRandomGenerator::system()->fillRange(words.data(), words.size());
    Guid::Bytes wire;
    std::copy_n(reinterpret_cast<const char*>(words.data()), wire.size(), wire.data());
    // The third group is little-endian on the wire: its version stands in the second byte.
    wire[7] = static_cast<char>((wire[7] & 0x0F) | 0x40);
    wire[8] = static_cast<char>((wire[8] & 0x3F) | 0x80);
    const Guid::Bytes sorted = Guid::FromWire({wire.data(), wire.size()});
    return SqlValue::Bytes(evaluation.arena->Keep({sorted.data(), sorted.size()}));
}

BoundPtr BindNewId(Arguments arguments) {
    BoundPtr call = MakeCall(NewId, MakeType(TypeKind::UniqueIdentifier), std::move(arguments));
    static_cast<BoundCall&>(*call).isVolatile = true;
    return call;
}

BoundPtr RefuseSequentialId(Arguments) {
    throw SqlError(302);
}

struct Algorithm {
    QStringView name;
    QCryptographicHash::Algorithm algorithm;
};

constexpr std::array<Algorithm, 6> Algorithms = {{
    {u"md4", QCryptographicHash::Md4},
    {u"md5", QCryptographicHash::Md5},
    {u"sha", QCryptographicHash::Sha1},
    {u"sha1", QCryptographicHash::Sha1},
    {u"sha2_256", QCryptographicHash::Sha256},
    {u"sha2_512", QCryptographicHash::Sha512},
}};

// The bytes that a text has on the wire; binaries are what they are.
QByteArray BytesOf(const SqlValue& value, const SqlType& type) {
    if (ClassOf(type) != TypeClass::Text) {
        return {value.text.data(), static_cast<qsizetype>(value.text.size())};
    }
    const QString text = FromUtf8(value.text);
    if (IsUnicode(type.kind)) {
        return {reinterpret_cast<const char*>(text.utf16()), text.size() * 2};
    }
    QByteArray bytes;
    for (const QChar unit : text) bytes += static_cast<char>(Cp1252Of(unit.unicode()));
    return bytes;
}

SqlValue HashBytes(const BoundCall& call, const SqlValue* a, const Evaluation& evaluation) {
    const QString name = FromUtf8(a[0].text).toLower();
    for (const Algorithm& entry : Algorithms) {
        if (entry.name != name) continue;
        const QByteArray hash =
            QCryptographicHash::hash(BytesOf(a[1], call.parts[1]->type), entry.algorithm);
        return SqlValue::Bytes(
            evaluation.arena->Keep({hash.constData(), static_cast<size_t>(hash.size())}));
    }
    return {};
}

BoundPtr BindHashBytes(Arguments arguments) {
    const TypeClass cls = ClassOf(arguments[1]->type);
    if (arguments[1]->untypedNull) {
        arguments[1] = AsText(std::move(arguments[1]));
    } else if (cls != TypeClass::Text && cls != TypeClass::Binary) {
        throw SqlError(
            8116, {arguments[1]->type.Name(), QStringLiteral("2"), QStringLiteral("hashbytes")});
    }
    arguments[0] = AsText(std::move(arguments[0]));
    return MakeNullableCall(HashBytes, MakeType(TypeKind::VarBinary, 8000), std::move(arguments));
}

constexpr uint32_t HashBasis = 2166136261, HashPrime = 16777619;  // FNV-1a

uint32_t HashOf(std::string_view bytes) {
    uint32_t hash = HashBasis;
    for (const char c : bytes) hash = (hash ^ static_cast<unsigned char>(c)) * HashPrime;
    return hash;
}

// Equal values have equal sums: text without its case and the blanks at its end, unless `Binary`.
template <bool Binary>
uint32_t SumOf(const SqlValue& value, const SqlType& type, TextArena& arena) {
    if (value.IsNull()) return 0x7FFFFFFF;
    if (ClassOf(type) == TypeClass::Integer) return static_cast<uint32_t>(value.integer);
    if (ClassOf(type) == TypeClass::Text && !Binary) {
        const QString text = FromUtf8(WithoutTrailingBlanks(value.text)).toCaseFolded();
        return HashOf(ToUtf8(text));
    }
    if (value.kind == SqlValue::Kind::Text || value.kind == SqlValue::Kind::Bytes) {
        return HashOf(value.text);
    }
    const SqlType text = MakeType(TypeKind::NVarChar, SqlType::Max);
    return HashOf(Conversion::Convert(value, type, text, Conversion::NoStyle, arena).text);
}

template <bool Binary>
SqlValue Checksum(const BoundCall& call, const SqlValue* a, const Evaluation& evaluation) {
    uint32_t sum = 0;
    for (size_t i = 0; i < call.parts.size(); ++i) {
        sum = (sum << 4 | sum >> 28) ^ SumOf<Binary>(a[i], call.parts[i]->type, *evaluation.arena);
    }
    return SqlValue::Integer(static_cast<int32_t>(sum));
}

template <bool Binary>
BoundPtr BindChecksum(Arguments arguments) {
    return MakeNeverNullCall(Checksum<Binary>, IntType(), std::move(arguments));
}

}  // namespace

std::span<const FunctionEntry> HashFunctions() {
    static constexpr std::array<FunctionEntry, 5> Table = {{
        {u"newid", 0, 0, BindNewId},
        {u"newsequentialid", 0, 0, RefuseSequentialId},
        {u"hashbytes", 2, 2, BindHashBytes},
        {u"checksum", 1, BoundCall::MaxArguments, BindChecksum<false>},
        {u"binary_checksum", 1, BoundCall::MaxArguments, BindChecksum<true>},
    }};
    return Table;
}

}  // namespace quarv::localdb::engine
