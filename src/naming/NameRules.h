#pragma once

#include <QString>
#include <QStringList>

class AudioFile;

/// What is to be said of a name that a format gives to a record, whatever else stands in the file's folder. In the
/// user's language.
namespace NameRules {

/// The objection to a name that leads out of the folder.
QString leadsOut();

/// Why the name must not be given: it leads out of the folder (see FileMove::leadsOut), or a tag brings a line break
/// into it. Empty when nothing is wrong, and for the name that the file has already.
/// @param folder that of the file, with "/" at its end. @param name as the format built it for the record.
QString objectionTo(const QString& folder, const QString& name, const QStringList& format, const AudioFile& record);

/// What is worth knowing of a name before it is given: that it leads into a folder (a long one is shortened), or is
/// hidden. Mostly empty.
QString remarkOn(const QString& name);

} // namespace NameRules
