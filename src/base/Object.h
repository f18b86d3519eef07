// Object: anything that a Value can hold by reference. Identity is the object's address; two equal
// looking objects are still two. Controls, models and rows derive from it; it knows none of them.
#pragma once

#include <memory>

namespace quarv {

class Object {
  public:
    virtual ~Object();

  protected:
    Object() = default;
    Object(const Object&) = default;
    Object& operator=(const Object&) = default;
};

// Shared ownership, or none where the pointer was made by Borrow. "No object" is the null
// reference.
using ObjectRef = std::shared_ptr<Object>;

// A reference that does not own: for controls, whose parent owns them. The caller sees to it that
// the object outlives the reference.
ObjectRef Borrow(Object* object);

}  // namespace quarv
