#include "Corpus.h"
#include "Measure.h"
#include "Painting.h"
#include "Parts.h"
#include "app/ui/Program.h"
#include "artwork/ui/AlbumArtView.h"
#include "library/FileFinder.h"
#include "tagengine/TaglibWrapper.h"

#include <QFileInfo>
#include <QImage>
#include <QKeyEvent>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <stdexcept>
#include <vector>

#include <fcntl.h>
#include <unistd.h>

namespace {

constexpr int fileCount = 1'000;
constexpr int runs = 5;
constexpr int coverBytes = 300'000;
constexpr int side = 3'000;
constexpr int pictures = 40;

/// A picture without large even areas, as photographs are.
QImage photograph(int seed)
{
    QImage image(side, side, QImage::Format_RGB32);
    auto state = static_cast<unsigned int>(seed) * 2'654'435'761U + 1;
    for (int y = 0; y < side; ++y) {
        auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < side; ++x) {
            state = state * 1'664'525U + 1'013'904'223U;
            line[x] = qRgb(x / 12, y / 12, static_cast<int>(state >> 26));
        }
    }
    return image;
}

QStringList copies(const Corpus& corpus, const QTemporaryDir& folder, int count, Corpus::Kind kind)
{
    QStringList paths;
    for (const auto& path : FileFinder::audioFiles(corpus.folder(count, kind))) {
        paths += folder.filePath(QString::number(paths.size()) + path.right(4));
        if (!QFile::copy(path, paths.back()))
            throw std::runtime_error("the files don't fit on the disk");
    }
    return paths;
}

/// @return the milliseconds until the work on fresh copies of the files is on the disk.
template <class Prepare, class Work>
double onCopies(const Corpus& corpus, const QString& root, Prepare prepare, Work work)
{
    const QTemporaryDir folder(root + QStringLiteral("/art-XXXXXX"));
    const QStringList paths = copies(corpus, folder, fileCount, Corpus::Mixed);
    prepare(paths);
    const int descriptor = ::open(QFile::encodeName(folder.path()).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    ::syncfs(descriptor);
    const double time = Measure::milliseconds([&] {
        work(paths);
        ::syncfs(descriptor);
    });
    ::close(descriptor);
    return time;
}

void settingCovers(const Corpus& corpus, const QString& root)
{
    const QByteArray cover = "\xff\xd8\xff" + QByteArray(coverBytes, 'c');
    QImage picture(60, 60, QImage::Format_RGB32);
    picture.fill(Qt::darkGreen);
    const QString image = root + QStringLiteral("/cover.jpg");
    picture.save(image, "jpeg");
    QFile file(image);
    if (!file.open(QIODevice::Append) || file.write(QByteArray(coverBytes, 'c')) != coverBytes)
        throw std::runtime_error("the cover could not be written");
    file.close();
    const auto bare = [&] {
        return onCopies(
            corpus, root, [](const QStringList&) {},
            [&](const QStringList& paths) {
                for (const auto& path : paths) {
                    if (!TaglibWrapper::setImageData(cover, path, path.right(3)))
                        throw std::runtime_error("a cover could not be set");
                }
            });
    };
    const auto own = [&] {
        Program program;
        return onCopies(
            corpus, root,
            [&](const QStringList& paths) {
                program.controller.openPaths(paths);
                program.controller.selectAll();
            },
            [&](const QStringList& paths) {
                program.artwork.setArtFromFile(image, program.list.selectedObjects());
                const QString& last = paths.back();
                if (TaglibWrapper::getImageData(last, last.right(3)).value_or(QByteArray()).size() < coverBytes)
                    throw std::runtime_error("the command set no cover");
            });
    };
    const auto times = Measure::compare(runs, bare, own);
    std::printf("  set a cover of 300 KB on %d files: engine %.0f ms, command %.0f ms, ratio %.2f (aim 1.1)\n",
                fileCount, times.bare, times.own, times.ratio());
    QFile::remove(image);
}

void pressDown(QWidget& table)
{
    for (const auto type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QKeyEvent event(type, Qt::Key_Down, Qt::NoModifier);
        QCoreApplication::sendEvent(&table, &event);
    }
}

void showingLargeArt(const Corpus& corpus, const QString& root)
{
    const QTemporaryDir folder(root + QStringLiteral("/art-XXXXXX"));
    const QStringList paths = copies(corpus, folder, pictures, Corpus::Mp3Plain);
    const QString image = folder.filePath(QStringLiteral("large.jpg"));
    for (int i = 0; i < pictures; ++i) {
        photograph(i).save(image, "jpeg", 85);
        QFile file(image);
        if (!file.open(QIODevice::ReadOnly)
            || !TaglibWrapper::setImageData(file.readAll(), paths[i], paths[i].right(3)))
            throw std::runtime_error("a cover could not be set");
    }
    std::printf("  covers of %d x %d pixels, the last of %lld KB\n", side, side,
                static_cast<long long>(QFileInfo(image).size() / 1024));

    Program program;
    program.window.show();
    program.controller.openPaths(paths);
    auto& art = *program.window.findChild<AlbumArtView*>();
    auto& table = *program.window.findChild<QWidget*>(QStringLiteral("table"));
    int shown = 0;
    QObject::connect(&art, &AlbumArtView::imageChanged, &art, [&] { ++shown; });
    Painting painting(art);
    std::vector<double> times;
    std::vector<double> blocked;
    for (int row = 0; row < pictures; ++row) {
        const int before = shown;
        painting.settle();
        times.push_back(Measure::milliseconds([&] {
            blocked.push_back(Measure::milliseconds([&] { program.list.selection().setRows({row}); }));
            while (shown == before)
                QCoreApplication::processEvents();
            painting.settle();
            art.repaint();
        }));
    }
    std::printf(
        "  selection to painted art: median %.1f ms, worst %.1f (aim 50); the window is busy for %.1f of it\n",
        Measure::median(times), *std::max_element(times.begin(), times.end()), Measure::median(blocked));

    program.list.selection().setRows({0});
    std::vector<double> keys;
    shown = 0;
    for (int i = 1; i < pictures; ++i)
        keys.push_back(Measure::milliseconds([&] {
            pressDown(table);
            QCoreApplication::processEvents();
        }));
    const int during = shown;
    const double rest = Measure::milliseconds([&] {
        while (shown == during)
            QCoreApplication::processEvents();
    });
    std::printf(
        "  %d Down keys as fast as they are taken: median %.1f ms a key, worst %.1f; the last art %.1f ms after "
        "them, %d of the others shown on the way\n",
        pictures - 1, Measure::median(keys), *std::max_element(keys.begin(), keys.end()), rest, during);
}

} // namespace

void Parts::artwork(const Corpus& corpus, const QString& root)
{
    std::printf("Cover art\n");
    settingCovers(corpus, root);
    showingLargeArt(corpus, root);
    std::printf("\n");
}
