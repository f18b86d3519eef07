#include "localdb/tsql/Window.h"

#include "localdb/tsql/ExpressionParser.h"
#include "localdb/tsql/QueryParts.h"

namespace quarv::localdb::tsql {

namespace {

FrameBound ParseBound(TokenReader& reader) {
    FrameBound bound;
    if (reader.TryWord(u"unbounded")) {
        const bool preceding = reader.TryWord(u"preceding");
        if (!preceding) reader.ExpectWord(u"following");
        bound.edge = preceding ? FrameEdge::UnboundedPreceding : FrameEdge::UnboundedFollowing;
        return bound;
    }
    if (reader.TryWord(u"current")) {
        reader.ExpectWord(u"row");
        return bound;
    }
    bound.count = reader.ExpectInteger();
    const bool preceding = reader.TryWord(u"preceding");
    if (!preceding) reader.ExpectWord(u"following");
    bound.edge = preceding ? FrameEdge::Preceding : FrameEdge::Following;
    return bound;
}

void ParseFrame(TokenReader& reader, Window& window) {
    if (reader.TryWord(u"rows")) {
        window.unit = FrameUnit::Rows;
    } else if (reader.TryWord(u"range")) {
        window.unit = FrameUnit::Range;
    } else {
        return;
    }
    const bool between = reader.TryWord(u"between");
    window.begin = ParseBound(reader);
    if (between) {
        reader.ExpectWord(u"and");
        window.end = ParseBound(reader);
    }
    const bool ordered = window.begin.edge <= window.end.edge &&
                         window.begin.edge != FrameEdge::UnboundedFollowing &&
                         window.end.edge != FrameEdge::UnboundedPreceding;
    if (!ordered) reader.Fail();
}

std::unique_ptr<Window> ParseWindow(TokenReader& reader) {
    auto window = std::make_unique<Window>();
    if (!reader.AtSign(u"(")) reader.Unsupported(QStringLiteral("WINDOW"));
    reader.ExpectSign(u"(");
    TokenReader::Nesting nesting(reader);
    if (reader.TryWord(u"partition")) {
        reader.ExpectWord(u"by");
        window->partition = ParseList(reader);
    }
    if (reader.TryWord(u"order")) window->order = ParseOrderList(reader);
    ParseFrame(reader, *window);
    reader.ExpectSign(u")");
    return window;
}

}  // namespace

void ParseFunctionTail(TokenReader& reader, Function& function) {
    for (const QStringView word : {u"ignore", u"respect"}) {
        if (reader.AtWord(word) && reader.AtWord(u"nulls", 1)) {
            reader.Unsupported(word.toString().toUpper() + QStringLiteral(" NULLS"));
        }
    }
    if (reader.AtWord(u"within") && reader.AtWord(u"group", 1)) {
        reader.Take();
        reader.Take();
        reader.ExpectSign(u"(");
        reader.ExpectWord(u"order");
        function.within = ParseOrderList(reader);
        reader.ExpectSign(u")");
    }
    if (!reader.TryWord(u"over")) return;
    function.over = ParseWindow(reader);
    for (const ExpressionPtr& part : function.over->partition) {
        function.height = std::max(function.height, part->height + 1);
    }
    for (const OrderItem& item : function.over->order) {
        function.height = std::max(function.height, item.expression->height + 1);
    }
}

}  // namespace quarv::localdb::tsql
