#pragma once

#include <QList>

#include <optional>

/// Where the arrow keys go in a list of @p rowCount rows: the row above (-1) or below (1) the selected ones
/// (ascending). Without a selection, down leads to the first row.
/// @return nothing where there is no such row.
std::optional<int> rowAfterStep(const QList<int>& selected, int rowCount, int step);
