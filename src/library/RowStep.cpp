#include "library/RowStep.h"

std::optional<int> rowAfterStep(const QList<int>& selected, int rowCount, int step)
{
    constexpr int aboveFirst = -1;
    const int from = selected.isEmpty() ? aboveFirst : step < 0 ? selected.first() : selected.last();
    const int row = from + step;
    return row >= 0 && row < rowCount ? std::optional(row) : std::nullopt;
}
