#pragma once

#include "tagengine/SafeFileStream.h"

#include <QString>

#include <taglib/fileref.h>

#include <functional>

/// A file opened for one engine operation; closed when it goes out of scope.
class OpenedFile {
public:
    /// Opens a file for reading.
    explicit OpenedFile(const QString& path) : OpenedFile(path, SafeFileStream::Mode::Read) {}

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

    /// TagLib reports the properties of the ID3v2 tag alone once that holds anything. An empty one takes over what the
    /// file's older tags (ID3v1 and APE, INFO) show, so that writing into it does not hide them.
    void fillId3v2Tag();

    /// The file as a concrete container, or null when TagLib chose another one.
    template <class Container>
    Container* as() const
    {
        return dynamic_cast<Container*>(ref_.file());
    }

private:
    OpenedFile(const QString& path, SafeFileStream::Mode mode);
    SafeFileStream::Outcome save();
    bool saveTags();

    SafeFileStream stream_;
    TagLib::FileRef ref_;
};
