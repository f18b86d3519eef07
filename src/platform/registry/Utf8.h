// The way between the registry's buffers, which are UTF-8 bytes, and the system's text.
#pragma once

#include <QByteArrayView>
#include <QString>

namespace quarv::registry {

// A leading U+FEFF is text like any other and stays; bytes that are not UTF-8 become U+FFFD.
QString FromUtf8(QByteArrayView bytes);

}  // namespace quarv::registry
