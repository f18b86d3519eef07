#include "localdb/tsql/ExpressionText.h"

#include "localdb/tsql/SyntaxError.h"

namespace quarv::localdb::tsql {

namespace {

QString Text(const Expression& expression);

QString Quoted(const QString& text) {
    return u'\'' + QString(text).replace(QStringLiteral("'"), QStringLiteral("''")) + u'\'';
}

QString LiteralText(const Literal& literal) {
    switch (literal.literal) {
        case LiteralKind::Null:
            return QStringLiteral("NULL");
        case LiteralKind::String:
            return Quoted(literal.text);
        case LiteralKind::NationalString:
            return u'N' + Quoted(literal.text);
        case LiteralKind::Money:
            return QStringLiteral("($") + literal.text + u')';
        case LiteralKind::Binary:
            return QStringLiteral("0x") + literal.text;
        default:
            return u'(' + literal.text + u')';
    }
}

QString NegateText(const Negate& negate) {
    const auto* literal = negate.operand->kind == ExpressionKind::Literal
                              ? static_cast<const Literal*>(negate.operand.get())
                              : nullptr;
    const bool number = literal && literal->literal != LiteralKind::Null &&
                        literal->literal != LiteralKind::String &&
                        literal->literal != LiteralKind::NationalString;
    if (number && negate.sign == u'-') return QStringLiteral("(-") + literal->text + u')';
    return negate.sign + Text(*negate.operand);
}

QString TypeText(const TypeName& type) {
    QString text = Bracketed(type.name.toLower());
    if (type.max) text += QStringLiteral("(max)");
    QStringList arguments;
    for (const int argument : type.arguments) arguments.append(QString::number(argument));
    if (!arguments.isEmpty()) text += u'(' + arguments.join(u',') + u')';
    return text;
}

QString CastText(const Cast& cast) {
    QString text = cast.nullOnError ? QStringLiteral("TRY_CONVERT(") : QStringLiteral("CONVERT(");
    text += TypeText(cast.type) + u',' + Text(*cast.operand);
    if (cast.style) text += u',' + Text(*cast.style);
    return text + u')';
}

QString FunctionText(const Function& function) {
    QStringList arguments;
    for (const ExpressionPtr& argument : function.arguments) arguments.append(Text(*argument));
    return function.name.toLower() + u'(' + arguments.join(u',') + u')';
}

QString SignText(ComparisonSign sign) {
    switch (sign) {
        case ComparisonSign::Equal:
            return QStringLiteral("=");
        case ComparisonSign::NotEqual:
            return QStringLiteral("<>");
        case ComparisonSign::Less:
            return QStringLiteral("<");
        case ComparisonSign::LessOrEqual:
            return QStringLiteral("<=");
        case ComparisonSign::Greater:
            return QStringLiteral(">");
        default:
            return QStringLiteral(">=");
    }
}

bool IsJunction(const Expression& expression) {
    return expression.kind == ExpressionKind::Junction || expression.kind == ExpressionKind::In ||
           expression.kind == ExpressionKind::Between;
}

QString Grouped(const Expression& condition) {
    const QString text = Text(condition);
    return IsJunction(condition) ? u'(' + text + u')' : text;
}

QString JunctionText(const Junction& junction) {
    QStringList terms;
    for (const ExpressionPtr& term : junction.terms) terms.append(Grouped(*term));
    return terms.join(junction.isAnd ? QStringLiteral(" AND ") : QStringLiteral(" OR "));
}

// The server keeps a list as comparisons, the last first.
QString InText(const In& in) {
    if (in.query) {
        throw SyntaxError(SyntaxError::Unsupported, {QStringLiteral("a query in an expression")},
                          in.line, 1);
    }
    QStringList terms;
    for (const ExpressionPtr& value : in.values) {
        terms.prepend(Text(*in.operand) + u'=' + Text(*value));
    }
    const QString text = terms.join(QStringLiteral(" OR "));
    return in.negated ? QStringLiteral("NOT (") + text + u')' : text;
}

QString BetweenText(const Between& between) {
    const QString operand = Text(*between.operand);
    const QString text = operand + QStringLiteral(">=") + Text(*between.low) +
                         QStringLiteral(" AND ") + operand + QStringLiteral("<=") +
                         Text(*between.high);
    return between.negated ? QStringLiteral("NOT (") + text + u')' : text;
}

QString LikeText(const Like& like) {
    QString text = Text(*like.operand) + QStringLiteral(" like ") + Text(*like.pattern);
    if (like.escape) text += QStringLiteral(" escape ") + Text(*like.escape);
    return like.negated ? QStringLiteral("NOT ") + text : text;
}

QString CaseText(const Case& expression) {
    QString text = QStringLiteral("case");
    if (expression.operand) text += u' ' + Text(*expression.operand);
    for (const Case::Branch& branch : expression.branches) {
        text += QStringLiteral(" when ") + Text(*branch.when) + QStringLiteral(" then ") +
                Text(*branch.then);
    }
    if (expression.otherwise) text += QStringLiteral(" else ") + Text(*expression.otherwise);
    return text + QStringLiteral(" end");
}

// What is true or false; in a function of its own for the length's sake.
QString TextOfCondition(const Expression& expression) {
    switch (expression.kind) {
        case ExpressionKind::Comparison: {
            const auto& node = static_cast<const Comparison&>(expression);
            return Text(*node.left) + SignText(node.sign) + Text(*node.right);
        }
        case ExpressionKind::Junction:
            return JunctionText(static_cast<const Junction&>(expression));
        case ExpressionKind::Not:
            return QStringLiteral("NOT ") + Grouped(*static_cast<const Not&>(expression).operand);
        case ExpressionKind::IsNull: {
            const auto& node = static_cast<const IsNull&>(expression);
            return Text(*node.operand) +
                   (node.negated ? QStringLiteral(" IS NOT NULL") : QStringLiteral(" IS NULL"));
        }
        case ExpressionKind::Like:
            return LikeText(static_cast<const Like&>(expression));
        case ExpressionKind::In:
            return InText(static_cast<const In&>(expression));
        case ExpressionKind::Between:
            return BetweenText(static_cast<const Between&>(expression));
        default:
            throw SyntaxError(SyntaxError::Unsupported, {QStringLiteral("this expression")},
                              expression.line, 1);
    }
}

QString Text(const Expression& expression) {
    switch (expression.kind) {
        case ExpressionKind::Literal:
            return LiteralText(static_cast<const Literal&>(expression));
        case ExpressionKind::Negate:
            return NegateText(static_cast<const Negate&>(expression));
        case ExpressionKind::Arithmetic: {
            const auto& node = static_cast<const Arithmetic&>(expression);
            return u'(' + Text(*node.left) + node.sign + Text(*node.right) + u')';
        }
        case ExpressionKind::Cast:
            return CastText(static_cast<const Cast&>(expression));
        case ExpressionKind::Function:
            return FunctionText(static_cast<const Function&>(expression));
        case ExpressionKind::Collate: {
            const auto& node = static_cast<const Collate&>(expression);
            return Text(*node.operand) + QStringLiteral(" collate ") + node.collation;
        }
        case ExpressionKind::Column:
            return Bracketed(static_cast<const ColumnName&>(expression).name.name);
        case ExpressionKind::Case:
            return CaseText(static_cast<const Case&>(expression));
        default:
            return TextOfCondition(expression);
    }
}

}  // namespace

QString DefaultText(const Expression& expression) {
    const QString text = Text(expression);
    // A chain of operators brings its parentheses along.
    return expression.kind == ExpressionKind::Arithmetic ? text : u'(' + text + u')';
}

QString ConditionText(const Expression& condition) {
    return u'(' + Text(condition) + u')';
}

}  // namespace quarv::localdb::tsql