#pragma once

#include <QString>

#include <taglib/fileref.h>
#include <taglib/tiostream.h>

#include <memory>

/// A file opened for one engine operation; closed when it goes out of scope.
class OpenedFile {
public:
    enum class Mode { Read, ReadWrite };

    OpenedFile(const QString& path, Mode mode);

    /// True when the file could not be opened or is of a kind that TagLib does not handle.
    bool isNull() const { return ref_.isNull(); }
    TagLib::Tag* tag() const { return ref_.tag(); }
    TagLib::File* file() const { return ref_.file(); }
    /// @return true when the file was saved. An MP4 file that TagLib took for MPEG by its name is refused: a tag in
    /// front of it would move its sound away from where its index says.
    bool save();

    /// The file as a concrete container, or null when TagLib chose another one.
    template <class Container>
    Container* as() const
    {
        return dynamic_cast<Container*>(ref_.file());
    }

private:
    std::unique_ptr<TagLib::IOStream> stream_;
    TagLib::FileRef ref_;
};
