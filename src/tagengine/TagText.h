#pragma once

#include <QByteArray>
#include <QString>

#include <taglib/tbytevector.h>
#include <taglib/tstring.h>

#include <optional>

/// Conversions between TagLib's text and ours, and the engine's console line.
namespace TagText {

/// @return none when the text is not valid UTF-16.
std::optional<QString> fromTagLib(const TagLib::String& text);

/// @param text must be valid (see isValid).
TagLib::String toTagLib(const QString& text);

/// False for a text with a lone surrogate, which no tag format can hold.
bool isValid(const QString& text);

/// The leading decimal digits after optional white space and a plus sign; 0 for anything else, for a minus sign, and
/// for a number beyond `int`, which TagLib would write as a negative one.
unsigned int leadingNumber(const QString& text);

QByteArray toBytes(const TagLib::ByteVector& bytes);
TagLib::ByteVector fromBytes(const QByteArray& bytes);

/// One diagnostic line on standard output, flushed; paths in it keep their bytes.
void printLine(const QString& line);

} // namespace TagText
