#pragma once

#include <QString>
#include <QStringList>

#include <optional>

/// The 192 genre names, in the order of their ID3v1 genre numbers, as plain functions of text.
namespace GenreList {

const QStringList& names();

/// @return the index of the name that equals @p text exactly, case included; -1 when there is none.
int indexOf(const QString& text);

/// The first name in list order that is longer than @p typed and begins with it, ignoring case.
/// @return none for an empty text and when no name matches.
std::optional<QString> completed(const QString& typed);

} // namespace GenreList
