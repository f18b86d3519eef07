#include "controls/ButtonState.h"

#include <utility>

namespace quarv {

unsigned ButtonState::Move() {
    return std::exchange(hover_, true) ? Nothing : Repaint;
}

unsigned ButtonState::Leave() {
    hover_ = false;
    return Repaint;
}

unsigned ButtonState::Press() {
    pressed_ = true;
    return Repaint;
}

unsigned ButtonState::Release(bool inside) {
    pressed_ = false;
    return inside ? Repaint | RaiseClick : Repaint;
}

unsigned ButtonState::AfterRelease(bool inside, bool focusMoved) {
    return inside && !focusMoved ? Nothing : Repaint;
}

unsigned ButtonState::Hold() {
    held_ = true;
    return Repaint;
}

unsigned ButtonState::LetGo() {
    return std::exchange(held_, false) ? Repaint | RaiseClick : Nothing;
}

unsigned ButtonState::CancelHold() {
    return std::exchange(held_, false) ? Repaint : Nothing;
}

unsigned ButtonState::Reset() {
    *this = {};
    return Repaint;
}

bool HitsButton(const QPointF& position, const QSizeF& size) {
    return position.x() >= 0 && position.x() <= size.width() && position.y() >= 0 &&
           position.y() <= size.height();
}

}  // namespace quarv
