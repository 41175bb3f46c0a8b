#include "platform/UserDefaults.h"

UserDefaults::UserDefaults()
    : settings_(QSettings::IniFormat, QSettings::UserScope, QStringLiteral("sonvika"), QStringLiteral("sonvika"))
{
    // The files of other programs and of the system hold none of these.
    settings_.setFallbacksEnabled(false);
}

UserDefaults::UserDefaults(const QString& filePath) : settings_(filePath, QSettings::IniFormat) {}

bool UserDefaults::boolForKey(const QString& key) const
{
    return objectForKey(key).toBool();
}

void UserDefaults::setBool(const QString& key, bool value)
{
    setObject(key, value);
}

int UserDefaults::intForKey(const QString& key) const
{
    return objectForKey(key).toInt();
}

void UserDefaults::setInt(const QString& key, int value)
{
    setObject(key, value);
}

QByteArray UserDefaults::dataForKey(const QString& key) const
{
    return objectForKey(key).toByteArray();
}

void UserDefaults::setData(const QString& key, const QByteArray& value)
{
    setObject(key, value);
}

void UserDefaults::synchronize()
{
    const std::lock_guard lock(mutex_);
    settings_.sync();
}

QVariant UserDefaults::objectForKey(const QString& key) const
{
    const std::lock_guard lock(mutex_);
    return settings_.value(key);
}

void UserDefaults::setObject(const QString& key, const QVariant& value)
{
    const std::lock_guard lock(mutex_);
    settings_.setValue(key, value);
}
