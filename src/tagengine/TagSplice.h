#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <taglib/tfile.h>
#include <taglib/tiostream.h>

#include <memory>

/// Changes fields in the tags of a file and joins them with the old bytes of everything else. The kinds of tags that a
/// file has, and their versions, stay.
///
/// Operations return false, and note the reason, when the file can't hold what it is given. The stream has what changed
/// when `store` has returned true, and the file after the stream's commit.
class TagSplice {
public:
    /// @param file TagLib's reading of the stream. @return null for containers that TagLib changes itself.
    static std::unique_ptr<TagSplice> of(TagLib::File& file, TagLib::IOStream& stream);

    virtual ~TagSplice() = default;

    /// @param key one of the generic keys or of the property interface; an empty value removes the field.
    virtual bool setProperty(const QString& key, const QString& value) = 0;
    /// How a field reads that was given this value, where the container has a form of its own for it.
    virtual QString readBack(const QString& key, const QString& value) const
    {
        Q_UNUSED(key)
        return value;
    }
    enum class Pictures { Remove, KeepFirst };

    /// Removes every item that has no property key, but for the first picture if that is to stay.
    virtual bool removeUnsupported(Pictures pictures) = 0;
    /// Removes every item that has one, and the tags that are empty then.
    virtual bool removeProperties() = 0;
    /// Replaces the first picture, in an MP4 file all of them; empty bytes remove all.
    virtual bool setPicture(const QByteArray& bytes) = 0;
    /// Replaces all chapters (see TaglibWrapper::setChapters).
    virtual bool setChapters(const QStringList& chapters) = 0;
    virtual bool store() = 0;
};
