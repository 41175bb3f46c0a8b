#include "Corpus.h"
#include "Measure.h"
#include "Parts.h"

#include "library/ArrayController.h"
#include "library/FileFinder.h"
#include "library/FileLoader.h"
#include "library/WorkMonitor.h"
#include "platform/Notifier.h"
#include "platform/RecentDocuments.h"

#include <QFile>

#include <taglib/fileref.h>
#include <taglib/tag.h>
#include <taglib/tpropertymap.h>

#include <cstdio>
#include <string>
#include <utility>
#include <vector>

namespace {

class CountingNotifier : public Notifier {
public:
    void postNotification(const QString&, const QString&) override { ++count; }

    int count = 0;
};

class NoRecentDocuments : public RecentDocuments {
public:
    void noteNewRecentDocument(const QString&) override {}
    QStringList recentDocuments() const override { return {}; }
};

/// What any program that shows tags has to do with TagLib at the least, and nothing else.
double bareLoop(const QStringList& paths)
{
    std::vector<std::string> names;
    for (const auto& path : paths)
        names.push_back(QFile::encodeName(path).toStdString());
    volatile unsigned int sink = 0;
    return Measure::milliseconds([&] {
        for (const auto& name : names) {
            const TagLib::FileRef file(name.c_str(), true, TagLib::AudioProperties::Average);
            const auto& tag = *file.tag();
            sink = sink + tag.title().size() + tag.artist().size() + tag.album().size() + tag.comment().size();
            sink = sink + tag.genre().size() + tag.year() + tag.track() + file.file()->properties().size();
        }
    });
}

double load(const QString& folder)
{
    CountingNotifier notifier;
    NoRecentDocuments recentDocuments;
    ArrayController list;
    UnwatchedWork monitor;
    FileLoader loader(list, notifier, recentDocuments, monitor);
    const double time = Measure::milliseconds([&] { loader.openPath(folder); });
    if (notifier.count > 0)
        std::printf("  %d files were refused\n", notifier.count);
    return time;
}

/// @return the microseconds that loading takes for each file.
double compare(const char* title, const QString& folder, int runs)
{
    const QStringList paths = FileFinder::audioFiles(folder);
    bareLoop(paths);
    const auto times = Measure::compare(
        runs, [&] { return bareLoop(paths); }, [&] { return load(folder); });
    const double perFile = 1000.0 / static_cast<double>(paths.size());
    std::printf("  %7d %-18s %10.1f %10.1f %10.2f\n", static_cast<int>(paths.size()), title, times.bare * perFile,
                times.own * perFile, times.ratio());
    std::fflush(stdout);
    return times.own * perFile;
}

} // namespace

void Parts::loading(const Corpus& corpus, int largest)
{
    std::printf("Loading, microseconds for each file (warm cache)\n");
    std::printf("  %7s %-18s %10s %10s %10s\n", "files", "", "bare loop", "Sonvika", "ratio");
    for (const auto& [title, kind] : {std::pair{"MP3", Corpus::Mp3Plain},
                                      {"MP3 with cover", Corpus::Mp3Cover},
                                      {"M4A", Corpus::M4aPlain},
                                      {"M4A with cover", Corpus::M4aCover}})
        compare(title, corpus.folder(500, kind), 15);
    const double small = compare("mixed", corpus.folder(1'000), 15);
    double time = small;
    for (const int count : {10'000, 50'000}) {
        if (count <= largest)
            time = compare("mixed", corpus.folder(count), count > 10'000 ? 3 : 5);
    }
    std::printf("  the largest against 1000: %.2f\n\n", time / small);
}
