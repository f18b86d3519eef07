// ControlList: controls in creation order, none of them owned. A control takes itself out when it
// is destroyed; the list is shared so that it outlives the container that hands it out.
#pragma once

#include <memory>
#include <vector>

namespace quarv::forms {

class Control;

using ControlList = std::vector<Control*>;
using SharedControlList = std::shared_ptr<ControlList>;

}  // namespace quarv::forms
