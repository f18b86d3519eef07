#include "base/Error.h"

namespace quarv {

Error::Error(int number, QString description)
    : number_(number),
      description_(std::move(description)),
      what_(QStringLiteral("%1: %2").arg(number_).arg(description_).toStdString()) {}

}  // namespace quarv
