#pragma once

#include "support/CallRecorder.h"

/// How much of a change reached the disk.
struct Portion {
    struct Part {
        qint64 start; ///< in the bytes of the write
        qint64 length;
    };
    bool isThere = false;
    QList<Part> parts; ///< of a write
    qint64 length = 0; ///< of a write: what the file has at least
};

/// What lies below a folder: names that stand for files and folders, and the bytes of the files.
class Disk {
public:
    using FileId = CallRecorder::FileId;

    /// What is there now. @param root absolute, without links.
    static Disk read(const QByteArray& root);
    /// Puts it there, at the same paths, in place of what is there.
    void layOut() const;

    void apply(const CallRecorder::Call& call, const Portion& portion);
    void applyWhole(const CallRecorder::Call& call);

    /// The paths that lead to something; the root is not among them.
    QList<QByteArray> paths() const;
    bool isFolder(const QByteArray& path) const { return files_.value(names_.value(path)).isFolder; }
    /// @return a null array when there is no such file.
    QByteArray contents(const QByteArray& path) const;
    FileId idOf(const QByteArray& path) const { return names_.value(path); }
    qint64 lengthOf(FileId file) const { return files_.value(file).bytes.size(); }
    /// The path from the root on.
    QByteArray relative(const QByteArray& path) const { return path.mid(root_.size() + 1); }
    /// The first name that a file has, from the root on; empty when it has none.
    QByteArray nameOf(FileId file) const { return relative(names_.key(file)); }

    /// The same for two disks that programs can't tell apart.
    QByteArray fingerprint() const;

private:
    struct File {
        bool isFolder = false;
        QByteArray bytes;
    };

    QByteArray root_;
    QMap<QByteArray, FileId> names_;
    QMap<FileId, File> files_;
};
