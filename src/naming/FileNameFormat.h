#pragma once

#include <QString>
#include <QStringList>

class AudioFile;
class UserDefaults;

/// The file-name format: an ordered list of texts, each a field token or literal text. The tokens are the same in every
/// language, so that a stored format and one in a script keep their meaning; a window shows their titles instead.
namespace FileNameFormat {

/// The eight field tokens, in palette order: their English titles.
const QStringList& sortedKeys();
/// The title of a field token in the user's language; any other text as it is.
QString shownTitle(const QString& token);
/// The field token that has the text as its title in the user's language; the text itself when none has.
QString tokenFor(const QString& text);
bool isFieldToken(const QString& token);

/// Track, title, album and year with " - " between them.
QStringList defaultTokens();

/// The stored format; the default one when none is stored, or something else than a list of texts.
QStringList storedTokens(const UserDefaults& defaults);
/// Stores the format and writes it to disk at once.
void storeTokens(UserDefaults& defaults, const QStringList& tokens);

/// The name, with extension, that the format gives to a record. Track and disc numbers have at least two digits and
/// no total; what stands before the "/" appears as it is when it is no 64-bit decimal integer. Every other value
/// appears as it is, whatever it holds.
/// @return an empty text when the tokens yield nothing.
QString buildFileName(const QStringList& format, const AudioFile& record);

/// Whether one of the values in that name, rather than text of the format, has a line break in it.
bool valuesBreakLine(const QStringList& format, const AudioFile& record);

} // namespace FileNameFormat
