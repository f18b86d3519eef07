// The writing half of HiveText.
#include <QtEndian>

#include "platform/registry/HiveText.h"
#include "platform/registry/Quoting.h"
#include "platform/registry/RegTypes.h"
#include "platform/registry/Utf8.h"

namespace quarv::registry {

namespace {

// Text ends in exactly one NUL that is its own; whatever else is kept as bytes.
bool IsPlainText(const HiveValue& value) {
    return value.type == REG_SZ && value.data.endsWith('\0') &&
           QByteArrayView(value.data).isValidUtf8();
}

class Writer {
  public:
    explicit Writer(QByteArray& text) : text_(text) {}

    // False where a limit was passed.
    bool Key(const HiveKey& key, const QString& path) {
        if (++keys_ > MaxHiveKeys) return false;
        if (!path.isEmpty() || key.values.Count() > 0) KeyLine(key, path);
        for (const HiveValue& value : key.values.All()) {
            ValueLine(value);
            if (text_.size() > MaxHiveBytes) return false;
        }
        for (const auto& child : key.children.All()) {
            const QString childPath = path.isEmpty() ? child->name : path + u'\\' + child->name;
            if (!Key(*child, childPath)) return false;
        }
        return text_.size() <= MaxHiveBytes;
    }

  private:
    void KeyLine(const HiveKey& key, const QString& path) {
        text_.append("key ").append(Quoted(path).toUtf8());
        if (key.mark == HiveKey::Mark::Deleted) text_.append(" deleted");
        if (key.mark == HiveKey::Mark::Anew) text_.append(" anew");
        text_.append('\n');
    }

    void ValueLine(const HiveValue& value) {
        text_.append("value ").append(Quoted(value.name).toUtf8());
        if (value.deleted) {
            text_.append(" deleted");
        } else if (IsPlainText(value)) {
            text_.append(" text ").append(Quoted(FromUtf8(value.data.chopped(1))).toUtf8());
        } else if (value.type == REG_DWORD && value.data.size() == 4) {
            const quint32 number = qFromLittleEndian<quint32>(value.data.constData());
            text_.append(" number ").append(QByteArray::number(number));
        } else {
            text_.append(" data ").append(QByteArray::number(value.type));
            if (!value.data.isEmpty()) text_.append(' ').append(value.data.toHex());
        }
        text_.append('\n');
    }

    QByteArray& text_;
    int keys_ = 0;
};

}  // namespace

ResultCode WriteHive(const HiveKey& root, QByteArray& text) {
    text = "quarv-hive 1\n";
    if (!Writer(text).Key(root, QString())) return ERROR_NOT_ENOUGH_QUOTA;
    text.append("end\n");
    return text.size() > MaxHiveBytes ? ERROR_NOT_ENOUGH_QUOTA : ERROR_SUCCESS;
}

}  // namespace quarv::registry
