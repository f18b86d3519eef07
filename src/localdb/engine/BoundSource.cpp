// How the sources of a query write themselves.
#include "localdb/engine/BoundQuery.h"
#include "localdb/engine/SqlWriter.h"

namespace quarv::localdb::engine {

namespace {

// The storage bounds how many queries one set operation has.
constexpr size_t MaxArms = 400;

const char* JoinWords(tsql::JoinKind kind) {
    constexpr const char* Words[] = {" JOIN ",       " LEFT JOIN ", " RIGHT JOIN ", " FULL JOIN ",
                                     " CROSS JOIN ", " JOIN ",      " LEFT JOIN "};
    return Words[static_cast<size_t>(kind)];
}

const char* OperatorWords(tsql::SetOperator sign) {
    constexpr const char* Words[] = {" UNION ", " UNION ALL ", " EXCEPT ", " INTERSECT "};
    return Words[static_cast<size_t>(sign)];
}

void WriteArm(SqlWriter& writer, const BoundQuery& arm) {
    const bool wrap = arm.NeedsWrapping();
    if (wrap) writer.Text("SELECT * FROM (");
    arm.Write(writer);
    if (wrap) writer.Text(")");
}

}  // namespace

void BoundSource::Write(SqlWriter& writer) const {
    if (left) {
        WriteJoin(writer);
        return;
    }
    if (sql.empty()) {
        writer.Text("(");
        WriteContent(writer);
        writer.Text(")");
    } else {
        writer.Text(sql);
    }
    writer.Text(" AS " + alias);
}

void BoundSource::WriteJoin(SqlWriter& writer) const {
    left->Write(writer);
    writer.Text(JoinWords(join));
    const bool apply = join == tsql::JoinKind::CrossApply || join == tsql::JoinKind::OuterApply;
    if (apply) {
        right->WriteApply(writer);
        if (join == tsql::JoinKind::OuterApply) writer.Text(" ON 1");
        return;
    }
    // The right side of a join may be a join in parentheses.
    if (right->left) writer.Text("(");
    right->Write(writer);
    if (right->left) writer.Text(")");
    if (!on) return;
    writer.Text(" ON ");
    writer.Expression(*on);
}

// The right side is computed anew for each row of the left side: its rows are packed into one
// value, which may depend on that row, and unpacked again as a table.
void BoundSource::WriteApply(SqlWriter& writer) const {
    if (!sql.empty() || left) {
        Write(writer);
        return;
    }
    writer.Text("q_unpack((SELECT q_pack(" + ColumnList(width) + ") FROM (");
    WriteContent(writer);
    writer.Text("))) AS " + alias);
}

void BoundSource::WriteContent(SqlWriter& writer) const {
    if (packed) {
        writer.Text("SELECT " + ColumnList(width) + " FROM q_unpack(");
        writer.Expression(*packed);
        writer.Text(")");
    } else if (!series.empty()) {
        WriteSeries(writer);
    } else if (query) {
        query->Write(writer);
    } else if (!arms.empty()) {
        WriteArms(writer, arms.size());
    } else {
        WriteRows(writer);
    }
}

// The first `count` arms. All operators bind alike here and from left to right.
void BoundSource::WriteArms(SqlWriter& writer, size_t count) const {
    size_t begin = 0;
    if (count > MaxArms) {
        begin = (count - 1) / MaxArms * MaxArms;
        writer.Text("SELECT * FROM (");
        WriteArms(writer, begin);
        writer.Text(")");
    } else {
        WriteArm(writer, *arms.front());
        begin = 1;
    }
    for (size_t i = begin; i < count; ++i) {
        writer.Text(OperatorWords(operators[i - 1]));
        WriteArm(writer, *arms[i]);
    }
}

// The distance to the end is compared, not the next number: that may be none of the type.
void BoundSource::WriteSeries(SqlWriter& writer) const {
    writer.Text("WITH RECURSIVE g(c1,e,s) AS (SELECT a,e,");
    writer.Text(signedByOrder ? "CASE WHEN a<=e THEN s ELSE -s END" : "s");
    writer.Text(" AS s FROM (SELECT ");
    writer.Expression(*series[0]);
    writer.Text(" AS a,");
    writer.Expression(*series[1]);
    writer.Text(" AS e,");
    writer.Expression(*series[2]);
    writer.Text(" AS s) WHERE a IS NOT NULL AND e IS NOT NULL AND s IS NOT NULL AND ");
    writer.Text(signedByOrder ? "1" : "(s>0 AND a<=e OR s<0 AND a>=e)");
    writer.Text(" UNION ALL SELECT c1+s,e,s FROM g WHERE s>0 AND e-c1>=s OR s<0 AND c1-e>=-s)");
    writer.Text(" SELECT c1 FROM g");
}

// The first row is a query, for its columns' names.
void BoundSource::WriteRows(SqlWriter& writer) const {
    writer.Text("SELECT ");
    for (size_t row = 0; row < rows.size(); ++row) {
        if (row > 0) writer.Text(row == 1 ? " UNION ALL VALUES (" : "),(");
        for (size_t i = 0; i < rows[row].size(); ++i) {
            if (i > 0) writer.Text(",");
            writer.Expression(*rows[row][i]);
            if (row == 0) writer.Text(" AS c" + std::to_string(i + 1));
        }
    }
    if (rows.size() > 1) writer.Text(")");
}

}  // namespace quarv::localdb::engine
