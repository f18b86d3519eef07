#include "localdb/tsql/Jumps.h"

#include <algorithm>

#include "localdb/tsql/TokenReader.h"

namespace quarv::localdb::tsql {

Jumps::Inside::Inside(Jumps& jumps, const Statement& around, Place place)
    : jumps_(jumps), place_(place) {
    jumps_.around_.push_back({&around, place});
    if (place_ == Place::Loop) ++jumps_.loops_;
    if (place_ == Place::Catch) ++jumps_.catches_;
}

Jumps::Inside::~Inside() {
    jumps_.around_.pop_back();
    if (place_ == Place::Loop) --jumps_.loops_;
    if (place_ == Place::Catch) --jumps_.catches_;
}

std::vector<const Statement*> Jumps::Scopes() const {
    std::vector<const Statement*> scopes;
    for (const Level& level : around_) {
        if (level.place == Place::Try || level.place == Place::Catch) {
            scopes.push_back(level.statement);
        }
    }
    return scopes;
}

void Jumps::Declare(Label& label, const Token& at) {
    const QString key = label.name.toLower();
    if (labels_.contains(key)) {
        throw SyntaxError(SyntaxError::LabelTwice, {label.name}, at.line, at.column);
    }
    for (const Level& level : around_) label.path.push_back(level.statement);
    label.path.push_back(&label);
    labels_.insert(key, {&label, Scopes()});
}

void Jumps::Await(Goto& jump, const Token& name) {
    waiting_.push_back({&jump, name, Scopes()});
}

void Jumps::Join() {
    for (const Waiting& waiting : waiting_) {
        const Token& at = waiting.name;
        const auto place = labels_.constFind(at.text.toLower());
        if (place == labels_.cend()) {
            throw SyntaxError(SyntaxError::LabelMissing, {at.text}, at.line, at.column);
        }
        // A jump may leave TRY and CATCH blocks, but not enter them.
        const std::vector<const Statement*>& scopes = place->scopes;
        const bool leaves = scopes.size() <= waiting.scopes.size() &&
                            std::equal(scopes.begin(), scopes.end(), waiting.scopes.begin());
        if (!leaves) throw SyntaxError(SyntaxError::JumpIntoTry, {}, at.line, at.column);
        waiting.jump->target = place->label;
    }
}

StatementPtr ParseLabel(TokenReader& reader) {
    const Token name = reader.Take();
    reader.ExpectSign(u":");
    auto label = std::make_unique<Label>();
    label->name = name.text;
    reader.ControlFlow().Declare(*label, name);
    return label;
}

StatementPtr ParseGoto(TokenReader& reader) {
    reader.Take();
    auto jump = std::make_unique<Goto>();
    const Token name = reader.Peek();
    reader.ExpectName();
    reader.ControlFlow().Await(*jump, name);
    return jump;
}

}  // namespace quarv::localdb::tsql
