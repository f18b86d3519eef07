#include "localdb/tds/StringValues.h"

namespace quarv::localdb::tds {

namespace {

void Begin(ByteWriter& writer, StringForm form, size_t bytes) {
    switch (form) {
        case StringForm::Short:
            BeginShort(writer, bytes);
            break;
        case StringForm::Plp:
            BeginPlp(writer, bytes);
            break;
        case StringForm::Long:
            BeginLong(writer, bytes);
            break;
    }
}

void End(ByteWriter& writer, StringForm form) {
    if (form == StringForm::Plp) EndPlp(writer);
}

}  // namespace

void WriteWide(ByteWriter& writer, StringForm form, std::string_view utf8) {
    Begin(writer, form, 2 * Utf16Length(utf8));
    WriteUtf8AsUtf16(writer, utf8);
    End(writer, form);
}

void WriteNarrow(ByteWriter& writer, StringForm form, std::string_view utf8) {
    Begin(writer, form, Utf16Length(utf8));
    WriteUtf8AsCp1252(writer, utf8);
    End(writer, form);
}

void WriteBinary(ByteWriter& writer, StringForm form, std::span<const std::byte> bytes) {
    Begin(writer, form, bytes.size());
    writer.Bytes(bytes);
    End(writer, form);
}

StringForm FormOf(const TypeInfo& type) {
    if (type.IsPlp()) return StringForm::Plp;
    return type.Rule().framing == Framing::LongCount ? StringForm::Long : StringForm::Short;
}

}  // namespace quarv::localdb::tds
