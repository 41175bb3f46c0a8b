#pragma once

#include <QTest>

#include <algorithm>
#include <array>

/// Adds test rows that are written as "cell | cell | cell"; the text is the row's name as well.
inline void addRows(std::initializer_list<const char*> rows)
{
    QTest::addColumn<bool>("row");
    for (const char* row : rows)
        QTest::newRow(row) << true;
}

/// The cells of the current row; those that are not written are empty.
template <std::size_t count = 1>
std::array<QString, count> row()
{
    const auto cells = QString::fromUtf8(QTest::currentDataTag()).split(QStringLiteral(" | "));
    std::array<QString, count> result;
    std::copy_n(cells.begin(), std::min<qsizetype>(cells.size(), count), result.begin());
    return result;
}
