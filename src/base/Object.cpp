#include "base/Object.h"

namespace quarv {

Object::~Object() = default;

ObjectRef Borrow(Object* object) {
    // The aliasing constructor over an empty owner: a pointer without a control block.
    return {ObjectRef(), object};
}

}  // namespace quarv
