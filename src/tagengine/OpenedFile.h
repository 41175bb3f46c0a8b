#pragma once

#include <QString>

#include <taglib/fileref.h>

/// A file opened for one engine operation; closed when it goes out of scope.
class OpenedFile {
public:
    explicit OpenedFile(const QString& path);

    /// True when the file could not be opened or is of a kind that TagLib does not handle.
    bool isNull() const { return ref_.isNull(); }
    TagLib::Tag* tag() const { return ref_.tag(); }
    TagLib::File* file() const { return ref_.file(); }
    /// @return TagLib's own verdict on the save.
    bool save() { return ref_.save(); }

    /// The file as a concrete container, or null when TagLib chose another one.
    template <class Container>
    Container* as() const
    {
        return dynamic_cast<Container*>(ref_.file());
    }

private:
    TagLib::FileRef ref_;
};
