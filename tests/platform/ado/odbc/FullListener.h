// FullListener: a loopback port where connections are neither taken nor refused, as behind a
// firewall that drops them: the queue of those that wait is full.
#pragma once

#include <QString>
#include <vector>

#include "base/UniqueFd.h"

namespace quarv::test {

class FullListener {
  public:
    FullListener();

    int Port() const { return port_; }

  private:
    int port_ = 0;
    UniqueFd listener_;
    std::vector<UniqueFd> waiting_;
};

}  // namespace quarv::test
