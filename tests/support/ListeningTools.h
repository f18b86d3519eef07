// ListeningTools: while it lives, Qt believes that assistive tools listen, and what they would be
// told is kept. One at a time.
#pragma once

#include <QAccessible>
#include <vector>

namespace quarv::test {

class ListeningTools {
  public:
    ListeningTools();
    ~ListeningTools();
    ListeningTools(const ListeningTools&) = delete;
    ListeningTools& operator=(const ListeningTools&) = delete;

    // Whom such an event was told of since Forget, in order.
    std::vector<QAccessible::Id> Told(QAccessible::Event event) const;
    void Forget();
    void StopListening();

  private:
    QAccessible::UpdateHandler before_;
};

}  // namespace quarv::test
