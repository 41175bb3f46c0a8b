#include "tagengine/TagText.h"

#include "platform/PathBytes.h"
#include "tagengine/TaglibWrapper.h"

#include <algorithm>
#include <charconv>
#include <iostream>
#include <utility>

std::optional<QString> TaglibWrapper::stringFromWchar(const std::wstring& wide)
{
    const bool isPlain =
        std::all_of(wide.begin(), wide.end(), [](wchar_t code) { return static_cast<char32_t>(code) < 0xd800; });
    if (isPlain) {
        QString text(static_cast<qsizetype>(wide.size()), Qt::Uninitialized);
        std::transform(wide.begin(), wide.end(), text.begin(),
                       [](wchar_t code) { return QChar(static_cast<char16_t>(code)); });
        return text;
    }
    QString text;
    text.reserve(static_cast<qsizetype>(wide.size()));
    for (std::size_t i = 0; i < wide.size(); ++i) {
        char32_t code = static_cast<char32_t>(wide[i]);
        if (QChar::isHighSurrogate(code) && i + 1 < wide.size()
            && QChar::isLowSurrogate(static_cast<char32_t>(wide[i + 1])))
            code = QChar::surrogateToUcs4(static_cast<char16_t>(code), static_cast<char16_t>(wide[++i]));
        if (QChar::isSurrogate(code) || code > QChar::LastValidCodePoint)
            return std::nullopt;
        text += QChar::fromUcs4(code);
    }
    return text;
}

namespace TagText {

std::optional<QString> fromTagLib(const TagLib::String& text)
{
    return TaglibWrapper::stringFromWchar(text.toWString());
}

TagLib::String toTagLib(const QString& text)
{
    return {text.toUtf8().toStdString(), TagLib::String::UTF8};
}

bool isValid(const QString& text)
{
    return text.isValidUtf16();
}

unsigned int leadingNumber(const QString& text)
{
    QByteArray digits = text.trimmed().toLatin1();
    if (digits.startsWith('+'))
        digits.remove(0, 1);
    unsigned int number = 0;
    const auto result = std::from_chars(digits.cbegin(), digits.cend(), number);
    return result.ec == std::errc() && std::in_range<int>(number) ? number : 0;
}

QByteArray toBytes(const TagLib::ByteVector& bytes)
{
    return {bytes.data(), static_cast<qsizetype>(bytes.size())};
}

TagLib::ByteVector fromBytes(const QByteArray& bytes)
{
    return {bytes.constData(), static_cast<unsigned int>(bytes.size())};
}

void printLine(const QString& line)
{
    std::cout << PathBytes::encode(line).constData() << std::endl;
}

} // namespace TagText
