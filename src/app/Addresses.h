#pragma once

#include <QString>
#include <QUrl>

/// Where the program's people are found on the web.
namespace Addresses {

inline QUrl webSite()
{
    return QUrl(QStringLiteral("https://example.org/sonvika"));
}

inline QUrl social()
{
    return QUrl(QStringLiteral("https://example.org/sonvika/social"));
}

} // namespace Addresses
