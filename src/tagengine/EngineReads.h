#pragma once

#include "tagengine/PropertyMap.h"

#include <QString>
#include <QStringList>

#include <taglib/tbytevector.h>
#include <taglib/tfile.h>

#include <optional>

class OpenedFile;

/// The engine's readings of a file that is open already.
namespace EngineReads {

/// @return none when the file has no tag.
std::optional<PropertyMap> metadata(TagLib::File& file);

/// All values of the keys of the property interface that have more than one.
QMap<QString, QStringList> severalValues(TagLib::File& file);

/// @return none without a picture, and when the container is not of that type.
std::optional<TagLib::ByteVector> picture(TagLib::File& file, const QString& type);

/// As TaglibWrapper::getChapters gives them.
std::optional<QStringList> chapters(const OpenedFile& file);

} // namespace EngineReads
