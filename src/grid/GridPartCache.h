// GridPartCache: the cells and headings of a grid that assistive tools asked for, so many at most:
// a table of a million cells is never built. It makes them known to Qt and ends them; the table's
// own view owns it. It does not know what they show.
#pragma once

#include <QAccessible>
#include <list>
#include <map>
#include <memory>
#include <utility>
#include <vector>

#include "grid/GridPartAccess.h"

namespace quarv {

class GridPartCache {
  public:
    // Beyond this the one ends that was asked for longest ago.
    static constexpr size_t Most = 1024;

    GridPartCache() = default;
    ~GridPartCache();
    GridPartCache(const GridPartCache&) = delete;
    GridPartCache& operator=(const GridPartCache&) = delete;

    // Null where it was not kept.
    GridPartAccess* Find(int row, int column);
    // Makes it known to Qt, which owns it then, and gives it.
    GridPartAccess* Keep(std::unique_ptr<GridPartAccess> part);

    // All of them are invalid from now on. They stay until DeleteRetired: one of them may be what
    // is being asked.
    void RetireAll();
    void DeleteRetired();
    bool HasRetired() const { return !retired_.empty(); }

  private:
    using Place = std::pair<int, int>;
    struct Kept {
        Place place;
        GridPartAccess* part;
        QAccessible::Id id;
    };
    using Order = std::list<Kept>;

    void EndOldest();

    Order order_;  // the one asked for last comes first
    std::map<Place, Order::iterator> places_;
    std::vector<QAccessible::Id> retired_;
};

}  // namespace quarv
