#include "cli/Printable.h"

namespace {

constexpr char16_t firstPicture = 0x2400;
constexpr char16_t deleteCharacter = 0x7f;
constexpr char16_t deletePicture = 0x2421;
constexpr char16_t firstPrintable = 0x20;

/// The marks that order text written from right to left (Unicode Annex 9).
bool isDirectionMark(char16_t unit)
{
    return (unit >= 0x202a && unit <= 0x202e) || (unit >= 0x2066 && unit <= 0x2069);
}

bool isLineSeparator(char16_t unit)
{
    return unit == 0x2028 || unit == 0x2029;
}

bool isSecondControl(char16_t unit)
{
    return unit >= 0x80 && unit <= 0x9f;
}

} // namespace

QString Printable::line(const QString& text)
{
    // Lone surrogates become U+FFFD on the way to UTF-8.
    QString shown = text;
    for (auto& character : shown) {
        const char16_t unit = character.unicode();
        if (unit < firstPrintable)
            character = QChar(char16_t(firstPicture + unit));
        else if (unit == deleteCharacter)
            character = QChar(deletePicture);
        else if (isSecondControl(unit) || isDirectionMark(unit) || isLineSeparator(unit))
            character = QChar(QChar::ReplacementCharacter);
    }
    return shown;
}
