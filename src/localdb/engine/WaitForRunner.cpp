#include <chrono>
#include <thread>

#include "localdb/engine/ExpressionBinder.h"
#include "localdb/engine/Moment.h"
#include "localdb/engine/StatementRunner.h"
#include "localdb/engine/TypeTable.h"
#include "localdb/engine/Utf8.h"
#include "localdb/tsql/WaitFor.h"

namespace quarv::localdb::engine {

namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

constexpr auto LookPause = milliseconds(10);
constexpr int64_t Day = int64_t{24} * 60 * 60 * 1000;

int64_t MillisecondsOf(const Moment& moment) {
    const int64_t seconds = (moment.hour * int64_t{60} + moment.minute) * 60 + moment.second;
    return seconds * 1000 + moment.fraction / 10'000;
}

// A time without a date ("WAITFOR", Arguments). Raises SqlError 148.
int64_t ParseTime(const QString& text) {
    const std::optional<Moment> moment =
        Moment::Parse(ToUtf8(text), TypeKind::DateTime, Moment::Order::MonthFirst);
    const Moment none;
    const bool dated = moment && (moment->year != none.year || moment->month != none.month ||
                                  moment->day != none.day);
    if (!moment || dated || !text.contains(u':')) throw SqlError(148, {text});
    return MillisecondsOf(*moment);
}

// Milliseconds, from a text or from a variable that holds a time.
int64_t TimeOf(const tsql::Expression& expression, Frame& frame) {
    BindContext context = frame.NewContext();
    const Scope none;
    ExpressionBinder binder(context, none);
    const BoundPtr bound = binder.Value(expression);
    const OwnedValue value = frame.Compute(*bound);
    if (ClassOf(bound->type) == TypeClass::Text) return ParseTime(FromUtf8(value.View().text));
    if (bound->type.kind != TypeKind::DateTime) throw SqlError(9815, {bound->type.Name()});
    if (value.View().IsNull()) throw SqlError(148, {QString()});
    const Moment moment = Moment::Load(TypeKind::DateTime, value.View().integer);
    return MillisecondsOf(moment);
}

void Wait(milliseconds duration, ResultSink& sink) {
    const Clock::time_point end = Clock::now() + duration;
    for (Clock::time_point now = Clock::now(); now < end; now = Clock::now()) {
        if (sink.Cancelled()) throw Cancelled();
        std::this_thread::sleep_for(std::min<Clock::duration>(LookPause, end - now));
    }
}

}  // namespace

void RunWaitFor(const tsql::Statement& statement, Frame& frame, ResultSink& sink) {
    const auto& node = static_cast<const tsql::WaitFor&>(statement);
    int64_t delay = TimeOf(*node.time, frame);
    // A time of day that is over today comes tomorrow.
    if (node.untilTime) delay = (delay - MillisecondsOf(Moment::Now()) + Day) % Day;
    sink.SendNow();
    Wait(milliseconds(delay), sink);
    sink.StatementDone(StatementKind::Other, -1, false);
}

}  // namespace quarv::localdb::engine
