#pragma once

#include "tagengine/PropertyMap.h"

#include <QStringList>

/// A property map written as "TITLE=Blue Window;YEAR=2001".
inline PropertyMap propertyMap(const QString& text)
{
    PropertyMap map;
    for (const auto& entry : text.split(QLatin1Char(';'), Qt::SkipEmptyParts))
        map[entry.section(QLatin1Char('='), 0, 0)] = entry.section(QLatin1Char('='), 1);
    return map;
}
