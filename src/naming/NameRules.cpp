#include "naming/NameRules.h"

#include "model/AudioFile.h"
#include "naming/FileMove.h"
#include "naming/FileNameFormat.h"

#include <QCoreApplication>

#include <algorithm>

namespace {

QString translated(const char* text)
{
    return QCoreApplication::translate("NameRules", text);
}

/// A long one by its beginning, so that the remark leaves room for the names beside it.
QString shortened(const QString& folder)
{
    constexpr qsizetype longest = 30;
    if (folder.size() <= longest)
        return folder;
    const bool splitsPair = folder[longest - 1].isHighSurrogate();
    return folder.left(splitsPair ? longest - 1 : longest) + QChar(0x2026);
}

} // namespace

QString NameRules::leadsOut()
{
    return translated(QT_TRANSLATE_NOOP("NameRules", "The name leads out of the folder"));
}

QString NameRules::objectionTo(const QString& folder, const QString& name, const QStringList& format,
                               const AudioFile& record)
{
    if (name == record.fileName)
        return {};
    if (FileMove::leadsOut(folder, name))
        return leadsOut();
    if (FileNameFormat::valuesBreakLine(format, record))
        return translated(QT_TRANSLATE_NOOP("NameRules", "A tag brings a line break into the name"));
    return {};
}

QString NameRules::remarkOn(const QString& name)
{
    const QLatin1Char separator('/');
    const QString folder = name.section(separator, 0, -2);
    const QStringList components = name.split(separator);
    const bool isHidden = std::any_of(components.begin(), components.end(), [](const QString& component) {
        return component.startsWith(QLatin1Char('.'));
    });
    if (folder.isEmpty())
        return isHidden ? translated(QT_TRANSLATE_NOOP("NameRules", "Begins with a dot, which hides it")) : QString();
    const QString text =
        isHidden ? translated(QT_TRANSLATE_NOOP("NameRules", "Goes into the folder \"%1\"; a dot in front hides it"))
                 : translated(QT_TRANSLATE_NOOP("NameRules", "Goes into the folder \"%1\""));
    return text.arg(shortened(folder));
}
