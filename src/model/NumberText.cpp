#include "model/NumberText.h"

namespace NumberText {

Parts split(const QString& text)
{
    const QLatin1Char separator('/');
    if (text.contains(separator))
        return {text.left(text.indexOf(separator)), text.mid(text.lastIndexOf(separator) + 1)};
    if (text == various)
        return {variousNumber, variousNumber};
    return {text, QString()};
}

QString join(const QString& number, const QString& total)
{
    if (total.isEmpty())
        return number;
    return (number.isEmpty() ? QStringLiteral("0") : number) + QLatin1Char('/') + total;
}

} // namespace NumberText
