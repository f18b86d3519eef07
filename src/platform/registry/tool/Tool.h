// Tool: what quarv-reg's commands do to the hives. Owns no hive; prints to the streams it is given.
#pragma once

#include <QTextStream>

#include "platform/registry/Hives.h"
#include "platform/registry/tool/ToolArguments.h"

namespace quarv::registry {

class Tool {
  public:
    // All outlive this. `in` answers the question of a delete without -f.
    Tool(Hives& hives, QTextStream& in, QTextStream& out) : hives_(hives), in_(in), out_(out) {}

    // Query, Add or Delete. Raises ToolError.
    void Run(const ToolArguments& arguments);

  private:
    void Query(const ToolArguments& arguments);
    void List(HKey key, const QString& path, bool recursive);
    void ListValues(HKey key);
    void ListSubKeys(HKey key, const QString& path, bool recursive);
    void Add(const ToolArguments& arguments);
    void Delete(const ToolArguments& arguments);
    void Confirm(const QString& what);

    Hives& hives_;
    QTextStream& in_;
    QTextStream& out_;
};

}  // namespace quarv::registry
