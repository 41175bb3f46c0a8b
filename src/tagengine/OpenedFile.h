#pragma once

#include "tagengine/Guarded.h"
#include "tagengine/PropertyMap.h"
#include "tagengine/SafeFileStream.h"

#include <QString>

#include <taglib/fileref.h>

#include <functional>
#include <memory>

class TagSplice;

/// A file opened for one engine operation; closed when it goes out of scope.
class OpenedFile {
public:
    ~OpenedFile();

    /// Opens a file for reading and lets @p look have it, whatever came of that. What it is shown is what the file held
    /// at one moment.
    /// @return what @p look returns; none after an exception.
    template <class Look>
    static auto read(const QString& path, Look look)
    {
        return guarded([&] {
            const OpenedFile file(path, SafeFileStream::Mode::Read);
            return look(file);
        });
    }

    /// Opens a file, lets @p change alter its tags in memory, and saves it, wholly or not at all. All of it is done
    /// again where somebody else changed the file in the meantime.
    /// @param change is also called with a file that could not be opened, and returns false to leave it as it is.
    /// @return true when the file was saved. An MP4 file that TagLib took for MPEG by its name is refused: a tag in
    /// front of it would move its sound away from where its index says.
    static bool rewrite(const QString& path, const std::function<bool(OpenedFile& file)>& change);

    /// True when the file could not be opened or is of a kind that TagLib does not handle.
    bool isNull() const { return ref_.isNull(); }
    TagLib::Tag* tag() const { return ref_.tag(); }
    TagLib::File* file() const { return ref_.file(); }

    /// How the tags of this file are changed; null where TagLib changes and saves them itself.
    TagSplice* splice();
    /// Notes which fields are to change: the save is refused if another one would, or if one of them would not read as it
    /// was given.
    void expect(const PropertyMap& changes);
    /// The same for the first picture; empty bytes for none. @param type as for TaglibWrapper::getImageData.
    void expectPicture(const QByteArray& bytes, const QString& type);

    /// The file as a concrete container, or null when TagLib chose another one.
    template <class Container>
    Container* as() const
    {
        return dynamic_cast<Container*>(ref_.file());
    }

    Q_DISABLE_COPY_MOVE(OpenedFile)

private:
    OpenedFile(const QString& path, SafeFileStream::Mode mode);
    static SafeFileStream::Outcome rewriteOnce(const QString& path, const std::function<bool(OpenedFile&)>& change);
    SafeFileStream::Outcome save();
    bool saveTags();
    bool readsAsExpected();

    SafeFileStream stream_;
    TagLib::FileRef ref_;
    std::unique_ptr<TagSplice> splice_;
    PropertyMap before_;
    PropertyMap changes_;
    std::function<bool(TagLib::File& saved)> hasPicture_;
};
