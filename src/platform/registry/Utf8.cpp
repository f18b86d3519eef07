#include "platform/registry/Utf8.h"

#include <QStringConverter>

namespace quarv::registry {

QString FromUtf8(QByteArrayView bytes) {
    QStringDecoder decoder(QStringConverter::Utf8, QStringConverter::Flag::Stateless |
                                                       QStringConverter::Flag::ConvertInitialBom);
    return decoder.decode(bytes);
}

}  // namespace quarv::registry
