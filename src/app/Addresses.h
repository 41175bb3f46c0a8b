#pragma once

#include <QCoreApplication>
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

inline QUrl support()
{
    return QUrl(QStringLiteral("https://example.org/sonvika/support"));
}

/// A mail to the makers that names the program and its version.
inline QUrl feedback()
{
    const QString subject =
        QCoreApplication::applicationName() + QLatin1Char(' ') + QCoreApplication::applicationVersion();
    return QUrl(QStringLiteral("mailto:feedback@example.org?subject=")
                + QString::fromLatin1(QUrl::toPercentEncoding(subject)));
}

} // namespace Addresses
