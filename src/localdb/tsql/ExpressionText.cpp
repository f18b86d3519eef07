#include "localdb/tsql/ExpressionText.h"

#include "localdb/tsql/SyntaxError.h"

namespace quarv::localdb::tsql {

namespace {

QString Text(const Expression& expression);

QString Quoted(const QString& text) {
    return u'\'' + QString(text).replace(QStringLiteral("'"), QStringLiteral("''")) + u'\'';
}

QString Bracketed(const QString& name) {
    return u'[' + QString(name).replace(QStringLiteral("]"), QStringLiteral("]]")) + u']';
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
        case ExpressionKind::Column:
            return Bracketed(static_cast<const ColumnName&>(expression).name.name);
        default:
            throw SyntaxError(SyntaxError::Unsupported, {QStringLiteral("this default expression")},
                              expression.line, 1);
    }
}

}  // namespace

QString DefaultText(const Expression& expression) {
    const QString text = Text(expression);
    // A chain of operators brings its parentheses along.
    return expression.kind == ExpressionKind::Arithmetic ? text : u'(' + text + u')';
}

}  // namespace quarv::localdb::tsql
