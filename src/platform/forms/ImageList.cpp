#include "platform/forms/ImageList.h"

#include <QFile>

#include "base/RuntimeError.h"

namespace quarv::forms {

ImageList::ImageList(QWidget* container, const QString& name)
    : QWidget(container), Control(this, container, name) {
    hide();
}

int ImageList::Add(const QIcon& picture) {
    pictures_.push_back(picture);
    return Count();
}

int ImageList::Add(const QString& path) {
    if (!QFile::exists(path)) throw RuntimeError(RuntimeError::FileNotFound, path);
    return Add(QIcon(path));
}

const QIcon& ImageList::Picture(int number) const {
    if (number < 1 || number > Count()) throw RuntimeError(RuntimeError::SubscriptOutOfRange);
    return pictures_[static_cast<size_t>(number - 1)];
}

}  // namespace quarv::forms
