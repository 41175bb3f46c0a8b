#pragma once

#include <QString>

#include <filesystem>

/// The files that are measured: folders of albums, made from the sample album.
///
/// A pool of distinct files (a quarter each MP3 with a 300 KB cover, M4A with one, MP3 and M4A without) is written
/// once; the folders hold hard links to it, so that larger ones repeat the files of the pool under other paths.
class Corpus {
public:
    enum Kind { Mp3Cover, M4aCover, Mp3Plain, M4aPlain, Mixed };

    static constexpr int poolSize = 2000;

    /// A pool that @p root holds already is used again. Throws std::runtime_error when it can't be written.
    explicit Corpus(const QString& root);

    /// The folder that holds @p count files of one kind, or of all in turn.
    QString folder(int count, Kind kind = Mixed) const;

private:
    std::filesystem::path root_;
    std::filesystem::path pool_;
};
