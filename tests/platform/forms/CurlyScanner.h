// CurlyScanner: a language for tests: digits are numbers, what is in curly brackets is a text over
// as many lines as it takes, and the brackets nest. It notes the lines that it scanned.
#pragma once

#include <QStringList>
#include <algorithm>
#include <utility>

#include "platform/forms/LineScanner.h"

namespace quarv::forms {

class CurlyScanner : public LineScanner {
  public:
    // The state is the depth.
    int Scan(QStringView line, int state, std::vector<LineSpan>* spans) const override {
        scanned_ += line.toString();
        for (int i = 0; i < line.size(); ++i) {
            if (line.at(i) == u'{') ++state;
            const bool inside = state > 0;
            if (line.at(i) == u'}') state = std::max(state - 1, 0);
            if (!spans) continue;
            if (inside)
                spans->push_back({i, 1, LineKind::String});
            else if (line.at(i).isDigit())
                spans->push_back({i, 1, LineKind::Number});
        }
        return state;
    }

    // The lines since the last call, in order.
    QStringList Taken() const { return std::exchange(scanned_, {}); }

  private:
    mutable QStringList scanned_;
};

}  // namespace quarv::forms
