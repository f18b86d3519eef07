// RawValue: one value as its type's content bytes, taken out of its framing or put into it. What
// the bytes mean is read with NumericValues, TemporalValues and StringValues.
#pragma once

#include <QByteArray>

#include "localdb/tds/TypeInfo.h"

namespace quarv::localdb::tds {

// Long values (text, ntext, image) stand behind a text pointer in rows, and not in parameters.
enum class Place { Row, Parameter };

struct RawValue {
    bool null = true;
    QByteArray bytes;  // empty while null

    std::span<const std::byte> Bytes() const {
        return std::as_bytes(std::span(bytes.data(), static_cast<size_t>(bytes.size())));
    }

    void Encode(ByteWriter& writer, const TypeInfo& type, Place place) const;
    // Raises ValueLength, OutOfBytes or Truncated. Takes no more memory than the bytes at hand.
    static RawValue Decode(ByteReader& reader, const TypeInfo& type, Place place);

    friend bool operator==(const RawValue&, const RawValue&) = default;
};

}  // namespace quarv::localdb::tds
