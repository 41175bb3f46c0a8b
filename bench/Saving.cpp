#include "Measure.h"
#include "Parts.h"
#include "Syncs.h"

#include "tagengine/TaglibWrapper.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <taglib/fileref.h>
#include <taglib/mpegfile.h>
#include <taglib/tag.h>
#include <taglib/tpropertymap.h>
#include <taglib/tvariant.h>

#include <cstdio>
#include <stdexcept>
#include <string>

#include <fcntl.h>
#include <unistd.h>

namespace {

constexpr int fileCount = 100;
constexpr int readingRuns = 31;
constexpr int writingRuns = 5;
constexpr int coverBytes = 300'000;
constexpr const char* title = "Another title";

void readBare(const std::string& path)
{
    static volatile unsigned int sink = 0;
    const TagLib::FileRef file(path.c_str(), true, TagLib::AudioProperties::Average);
    const auto& tag = *file.tag();
    sink = sink + tag.title().size() + tag.artist().size() + tag.album().size() + tag.comment().size();
    sink = sink + tag.genre().size() + tag.year() + tag.track() + file.file()->properties().size();
}

bool read(const QString& path)
{
    return TaglibWrapper::getMetadata(path).has_value();
}

void setTitleBare(const std::string& path)
{
    TagLib::FileRef file(path.c_str(), true, TagLib::AudioProperties::Average);
    file.tag()->setTitle(title);
    file.save();
}

void setTitleDurably(const std::string& path)
{
    setTitleBare(path);
    const int file = ::open(path.c_str(), O_RDWR | O_CLOEXEC);
    ::fdatasync(file);
    ::close(file);
}

bool setTitle(const QString& path)
{
    return TaglibWrapper::setMetadata(path, {{QStringLiteral("TITLE"), QLatin1String(title)}});
}

void addCoverBare(const std::string& path)
{
    TagLib::FileRef file(path.c_str(), true, TagLib::AudioProperties::Average);
    const TagLib::ByteVector cover(coverBytes, 'c');
    file.file()->setComplexProperties(
        "PICTURE", {{{"data", cover}, {"mimeType", "image/jpeg"}, {"pictureType", "Front Cover"}}});
    file.save();
}

bool addCover(const QString& path)
{
    return TaglibWrapper::setImageData(QByteArray(coverBytes, 'c'), path, path.right(3));
}

struct Work {
    const char* title;
    const char* type;
    double aim;
    bool changes;
    void (*bare)(const std::string&);
    bool (*own)(const QString&);
    Syncs::Mode syncs;
};

constexpr Work works[]{
    {"read tags, MP3", "mp3", 0.9, false, readBare, read, Syncs::Mode::Real},
    {"read tags, M4A", "m4a", 0.35, false, readBare, read, Syncs::Mode::Real},
    {"change a title that fits the padding, no syncs", "mp3", 2.0, true, setTitleBare, setTitle, Syncs::Mode::None},
    {"the same as encoders leave them, no ID3v1", "plain.mp3", 2.0, true, setTitleBare, setTitle, Syncs::Mode::None},
    {"the same over TagLib and a sync of the file", "plain.mp3", 3.0, true, setTitleDurably, setTitle,
     Syncs::Mode::Real},
    {"change a title, M4A without padding", "m4a", 0.5, true, setTitleBare, setTitle, Syncs::Mode::Real},
    {"add a cover of 300 KB, MP3", "mp3", 2.5, true, addCoverBare, addCover, Syncs::Mode::Real},
    {"add a cover of 300 KB, M4A", "m4a", 2.5, true, addCoverBare, addCover, Syncs::Mode::Real},
};

/// Five minutes of noise with a few tags: an MP3 with TagLib's padding, with ID3v1 or ("plain") without it, and an M4A with
/// its tags in front and none.
void makeSeed(const QString& path, const QString& encoder)
{
    const QString input =
        QStringLiteral("-v error -f lavfi -i anoisesrc=d=300:a=0.3 -ac 2 -b:a 128k -map_metadata -1 "
                       "-metadata title=Title -metadata artist=Artist -metadata album=Album "
                       "-movflags +faststart -c:a");
    QProcess::execute(QStringLiteral("ffmpeg"), input.split(QLatin1Char(' ')) + QStringList{encoder, path});
    TagLib::FileRef file(QFile::encodeName(path).constData(), false);
    if (file.isNull())
        throw std::runtime_error("ffmpeg is needed to make the files");
    auto* mpeg = dynamic_cast<TagLib::MPEG::File*>(file.file());
    if (mpeg && path.endsWith(QLatin1String("plain.mp3")))
        mpeg->save(TagLib::MPEG::File::ID3v2, TagLib::File::StripOthers);
    else if (mpeg)
        mpeg->save();
}

/// Copies of the seed.
class Copies {
public:
    Copies(const QString& root, const QString& seed) : folder_(root + QStringLiteral("/saving-XXXXXX"))
    {
        for (int i = 0; i < fileCount; ++i) {
            paths_ += folder_.filePath(QString::number(i) + seed.right(4));
            if (!QFile::copy(seed, paths_.back()))
                throw std::runtime_error("the files don't fit on the disk");
        }
    }

    /// @return the milliseconds until the work on each is done, and all of it on the disk.
    template <class Each>
    double measure(Each each) const
    {
        const int folder = ::open(QFile::encodeName(folder_.path()).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
        ::syncfs(folder);
        const double time = Measure::milliseconds([&] {
            for (const auto& path : paths_)
                each(path);
            ::syncfs(folder);
        });
        ::close(folder);
        return time;
    }

private:
    QTemporaryDir folder_;
    QStringList paths_;
};

Measure::Comparison compare(const Work& work, const QString& root, const QString& seed)
{
    const auto bare = [&](const QString& path) { work.bare(QFile::encodeName(path).toStdString()); };
    const auto own = [&](const QString& path) {
        if (!work.own(path))
            throw std::runtime_error("a file could not be read or saved");
    };
    Syncs::set(work.syncs);
    if (work.changes)
        return Measure::compare(
            writingRuns, [&] { return Copies(root, seed).measure(bare); },
            [&] { return Copies(root, seed).measure(own); });
    const Copies copies(root, seed);
    copies.measure(bare);
    return Measure::compare(
        readingRuns, [&] { return copies.measure(bare); }, [&] { return copies.measure(own); });
}

void compareAndPrint(const Work& work, const QString& root, const QString& seed)
{
    const auto times = compare(work, root, seed);
    std::printf("  %-44s %10.0f %10.0f %8.2f %6.2f\n", work.title, times.bare * 1000 / fileCount,
                times.own * 1000 / fileCount, times.ratio(), work.aim);
    std::fflush(stdout);
}

/// How often one save waits for the disk.
void countAndPrintSyncs(const QString& root, const QString& seed)
{
    const Copies copies(root, seed);
    Syncs::set(Syncs::Mode::Slow);
    const double time = copies.measure([](const QString& path) { setTitle(path); });
    std::printf("  a title where each sync takes 15 ms: %.2f syncs and %.1f ms a file; aim: 4 syncs\n",
                double(Syncs::count()) / fileCount, time / fileCount);
    Syncs::set(Syncs::Mode::Real);
}

} // namespace

void Parts::saving(const QString& root)
{
    const QString seed = root + QStringLiteral("/seed.");
    makeSeed(seed + QStringLiteral("mp3"), QStringLiteral("libmp3lame"));
    makeSeed(seed + QStringLiteral("plain.mp3"), QStringLiteral("libmp3lame"));
    makeSeed(seed + QStringLiteral("m4a"), QStringLiteral("aac"));
    std::printf("Reading and saving %d files of 4.8 MB, microseconds for each (warm cache, all on disk at the end)\n",
                fileCount);
    std::printf("  %-44s %10s %10s %8s %6s\n", "", "bare loop", "Sonvika", "ratio", "aim");
    for (const auto& work : works)
        compareAndPrint(work, root, seed + QLatin1String(work.type));
    countAndPrintSyncs(root, seed + QStringLiteral("plain.mp3"));
    QFile::remove(seed + QStringLiteral("mp3"));
    QFile::remove(seed + QStringLiteral("plain.mp3"));
    QFile::remove(seed + QStringLiteral("m4a"));
    std::printf("  a mixed library of 10000 through openPath: see load; its aim is 1.0\n\n");
}
