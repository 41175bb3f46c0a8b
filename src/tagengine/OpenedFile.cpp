#include "tagengine/OpenedFile.h"

#include <QFile>

OpenedFile::OpenedFile(const QString& path)
    : ref_(QFile::encodeName(path).constData(), true, TagLib::AudioProperties::Average)
{
}
