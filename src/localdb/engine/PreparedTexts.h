// PreparedTexts: the statements that one session's client has prepared, by handle. Bounded in
// number and in text. Owned by the session's state.
#pragma once

#include <QString>
#include <cstdint>
#include <map>

namespace quarv::localdb::engine {

// A statement's text and its parameters' declarations.
struct PreparedText {
    QString declarations;
    QString text;

    qsizetype Units() const { return declarations.size() + text.size(); }
};

class PreparedTexts {
  public:
    static constexpr size_t Most = 65'536;
    static constexpr qsizetype MostUnits = 32 * 1024 * 1024;  // UTF-16 units of all texts

    // A new handle, from 1 on. Raises SqlError 8623 where it would be too much.
    int64_t Keep(PreparedText text);
    // Nothing for a handle that is not there.
    const PreparedText* Find(int64_t handle) const;
    void Forget(int64_t handle);
    // Handles go on from the last one.
    void Clear();

  private:
    std::map<int64_t, PreparedText> texts_;
    int64_t last_ = 0;
    qsizetype units_ = 0;
};

}  // namespace quarv::localdb::engine
