#pragma once

#include "tagengine/BlockReader.h"

#include <QByteArray>

#include <taglib/tiostream.h>

/// A file that TagLib only reads, through a cache. Nothing that is written to it reaches the disk.
class ReadStream : public TagLib::IOStream {
public:
    /// @param path in the file system's own encoding. A file that can't be opened gives a stream that is not open.
    explicit ReadStream(QByteArray path);
    ~ReadStream() override;

    TagLib::FileName name() const override { return path_.constData(); }
    TagLib::ByteVector readBlock(std::size_t length) override;
    void writeBlock(const TagLib::ByteVector&) override {}
    void insert(const TagLib::ByteVector&, TagLib::offset_t, std::size_t) override {}
    void removeBlock(TagLib::offset_t, std::size_t) override {}
    bool readOnly() const override { return true; }
    bool isOpen() const override { return descriptor_ >= 0; }
    void seek(TagLib::offset_t offset, Position from) override;
    TagLib::offset_t tell() const override { return position_; }
    TagLib::offset_t length() override { return length_; }
    void truncate(TagLib::offset_t) override {}

private:
    QByteArray path_;
    int descriptor_;
    TagLib::offset_t length_ = 0;
    TagLib::offset_t position_ = 0;
    BlockReader reader_;
};
