#include "localdb/engine/ErrorRules.h"

#include <algorithm>
#include <array>

#include "localdb/tsql/Insert.h"

namespace quarv::localdb::engine {

namespace {

struct Range {
    int first, last;
};

// What the parser and the binders raise. 148 is told by a WAITFOR that runs.
constexpr std::array<Range, 30> CompileErrors = {{
    {101, 147},   {149, 200},   {205, 209},     {213, 213},     {239, 240},     {246, 247},
    {252, 253},   {257, 257},   {263, 264},     {271, 273},     {302, 319},     {402, 408},
    {421, 421},   {460, 467},   {529, 529},     {1001, 1087},   {4104, 4151},   {4194, 4194},
    {4403, 4437}, {5308, 5309}, {8116, 8117},   {8120, 8133},   {8154, 8159},   {8161, 8161},
    {8623, 8623}, {9806, 9810}, {10704, 10741}, {10752, 10760}, {40515, 40515}, {40517, 40517},
}};

constexpr std::array<int, 10> Undoing = {217, 235, 241, 242, 245, 248, 295, 1205, 3930, 8114};
constexpr std::array<int, 2> Aborting = {911, 945};
constexpr std::array<int, 9> EndingScope = {102, 137, 156, 207, 208, 209, 4104, 8120, 40517};
// Found when a statement begins to run, before it touches a row.
constexpr std::array<int, 13> BeforeRows = {544,  545,  8101, 8102, 8164, 2705, 2714,
                                            2760, 1088, 2812, 3704, 4708, 4712};
constexpr std::array<int, 19> ConstraintFailures = {1711, 1752, 1753, 1761, 1762, 1763, 1764,
                                                    1765, 1767, 1768, 1769, 1770, 1773, 1774,
                                                    1776, 1778, 1779, 1781, 1785};

template <size_t N>
bool Contains(const std::array<int, N>& numbers, int number) {
    return std::find(numbers.begin(), numbers.end(), number) != numbers.end();
}

}  // namespace

bool ErrorRules::IsCompileError(int number) {
    return std::any_of(CompileErrors.begin(), CompileErrors.end(), [number](const Range& range) {
        return range.first <= number && number <= range.last;
    });
}

bool ErrorRules::IsOwn(int number, const tsql::Statement& statement) {
    constexpr int LastOfSyntax = 200;
    if (number == 137) return true;
    if (statement.type == tsql::StatementType::Execute) return false;
    return statement.type != tsql::StatementType::Insert || number > LastOfSyntax ||
           !static_cast<const tsql::Insert&>(statement).execute;
}

bool ErrorRules::TerminatesStatement(int number) {
    return !IsCompileError(number) && !EndsBatchAndTransaction(number) && !EndsBatch(number) &&
           !Contains(BeforeRows, number);
}

bool ErrorRules::EndsScope(int number) {
    return Contains(EndingScope, number);
}

bool ErrorRules::EndsBatchAndTransaction(int number) {
    return Contains(Undoing, number);
}

bool ErrorRules::EndsBatch(int number) {
    return Contains(Aborting, number);
}

bool ErrorRules::IsConstraintFailure(int number) {
    return Contains(ConstraintFailures, number);
}

}  // namespace quarv::localdb::engine
