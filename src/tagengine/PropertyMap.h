#pragma once

#include <QMap>
#include <QString>

/// The tag fields of one file as they cross the tag engine: upper-case key to text, each key once, keys ascending.
///
/// TITLE, ARTIST, ALBUM, YEAR, COMMENT, TRACK and GENRE are the generic fields that every tag has; any other key
/// (ALBUMARTIST, TRACKNUMBER, DISCNUMBER, COMPILATION, …) is a key of TagLib's property interface.
/// On writing, an empty value clears the field.
using PropertyMap = QMap<QString, QString>;
